#include "dxf/text.h"

namespace lmt::dxf {

std::string ReadChunkedText(const Entity& e, int begin, int end) {
  auto t = e.tags();
  std::string out;
  std::string_view last;
  for (int i = begin; i < end; ++i) {
    if (t[i].code == 3) out += t[i].value();
    if (t[i].code == 1) last = t[i].value();
  }
  out += last;
  return out;
}

std::vector<std::string_view> SplitTextChunks(std::string_view text) {
  constexpr size_t kChunk = 250;
  std::vector<std::string_view> out;
  while (text.size() > kChunk) {
    size_t cut = kChunk;
    // Not inside a UTF-8 sequence.
    while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80) {
      --cut;
    }
    // Not inside a \U+XXXX escape (7 bytes).
    size_t from = cut >= 6 ? cut - 6 : 0;
    size_t esc = text.substr(from, cut - from + 2).find("\\U+");
    if (esc != std::string_view::npos && from + esc < cut) cut = from + esc;
    if (cut == 0) cut = kChunk;  // nothing sane to respect; keep going
    out.push_back(text.substr(0, cut));
    text.remove_prefix(cut);
  }
  out.push_back(text);
  return out;
}

void WriteChunkedText(Entity& e, int begin, int end, std::string_view text) {
  auto t = e.tags();
  int at = -1;
  std::vector<Tag> kept;
  for (int i = begin; i < end; ++i) {
    if (t[i].code == 1 || t[i].code == 3) {
      if (at < 0) at = begin + static_cast<int>(kept.size());
    } else {
      kept.push_back(t[i]);
    }
  }
  e.EraseTags(begin, end);
  e.InsertTags(begin, kept);
  if (at < 0) at = begin + static_cast<int>(kept.size());
  std::vector<std::string_view> chunks = SplitTextChunks(text);
  std::vector<Tag> added;
  for (size_t i = 0; i < chunks.size(); ++i) {
    added.push_back(e.db()->MakeTag(i + 1 == chunks.size() ? 1 : 3, chunks[i]));
  }
  e.InsertTags(at, added);
}

std::string_view Text::text() const {
  int i = FindField("AcDbText", 1);
  return i >= 0 ? tags()[i].value() : std::string_view();
}

void Text::SetText(std::string_view text) {
  int i = FindField("AcDbText", 1);
  if (i >= 0) {
    SetValueAt(i, text);
  } else {
    int m = FindSubclass("AcDbText");
    int at = m >= 0 ? SubclassEnd(m) : XDataBegin();
    InsertTag(at, 1, text);
  }
}

std::string MText::text() const {
  int m = FindSubclass("AcDbMText");
  int b = m >= 0 ? m + 1 : 1;
  int e = m >= 0 ? SubclassEnd(m) : XDataBegin();
  return ReadChunkedText(*this, b, e);
}

void MText::SetText(std::string_view text) {
  int m = FindSubclass("AcDbMText");
  int b = m >= 0 ? m + 1 : 1;
  int e = m >= 0 ? SubclassEnd(m) : XDataBegin();
  WriteChunkedText(*this, b, e, text);
}

int MLeader::TextIndex() const {
  auto t = tags();
  int ctx = -1;
  for (size_t i = 1; i < t.size(); ++i) {
    if (t[i].Is(300, "CONTEXT_DATA{")) {
      ctx = static_cast<int>(i);
      break;
    }
  }
  if (ctx < 0) return -1;
  for (size_t i = static_cast<size_t>(ctx) + 1; i < t.size(); ++i) {
    if (t[i].code == 302 || t[i].code == 301) return -1;
    if (t[i].code == 304) return static_cast<int>(i);
  }
  return -1;
}

std::string_view MLeader::text() const {
  int i = TextIndex();
  return i >= 0 ? tags()[i].value() : std::string_view();
}

bool MLeader::SetText(std::string_view text) {
  int i = TextIndex();
  if (i < 0) return false;
  SetValueAt(i, text);
  // Proxy graphics sit in AcDbEntity: a byte count (92 or 160), then 310s.
  int m = FindSubclass("AcDbEntity");
  int e = m >= 0 ? SubclassEnd(m) : -1;
  auto t = tags();
  for (int k = m + 1; m >= 0 && k < e; ++k) {
    if (t[k].code == 92 || t[k].code == 160) {
      int j = k + 1;
      while (j < e && t[j].code == 310) ++j;
      EraseTags(k, j);
      break;
    }
  }
  return true;
}

}  // namespace lmt::dxf
