#include "dxf/tag_writer.h"

namespace lmt::dxf {

void TagWriter::Write(int code, std::string_view value) {
  char buf[8];
  int n = 0;
  char digits[6];
  int c = code;
  do {
    digits[n++] = static_cast<char>('0' + c % 10);
    c /= 10;
  } while (c > 0 && n < 5);
  int len = 0;
  for (int pad = 3 - n; pad > 0; --pad) buf[len++] = ' ';
  while (n > 0) buf[len++] = digits[--n];
  std::string& o = *out_;
  o.append(buf, static_cast<size_t>(len));
  if (crlf_) o += '\r';
  o += '\n';
  o.append(value);
  if (crlf_) o += '\r';
  o += '\n';
  if (file_ && o.size() >= kFlushAt) Flush();
}

bool TagWriter::Flush() {
  if (!file_) return ok_;
  if (!out_->empty() &&
      std::fwrite(out_->data(), 1, out_->size(), file_) != out_->size()) {
    ok_ = false;
  }
  out_->clear();
  return ok_;
}

void TagWriter::Write(const Tag& t) { Write(t.code, t.value()); }

}  // namespace lmt::dxf
