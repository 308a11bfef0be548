#include "dxf/recovery.h"

#include <string_view>
#include <utility>

namespace lmt::dxf {
namespace {

bool Ends(const Tag& t) {
  return t.code == 0 && (t.value() == "ENDSEC" || t.value() == "SECTION" ||
                         t.value() == "EOF");
}

// Walks the stream once, copying tags into `out` and noting repairs.
class SectionRepairer {
 public:
  explicit SectionRepairer(const std::vector<Tag>& tags) : t_(tags) {}

  std::vector<Repair> Run(std::vector<Tag>* out) {
    out_.reserve(t_.size() + 4);
    bool eof = false;
    while (i_ < t_.size()) {
      const Tag& tag = t_[i_];
      if (tag.code == 999) {
        Copy();
      } else if (tag.Is(0, "EOF")) {
        eof = true;
        while (i_ < t_.size()) Copy();  // what follows EOF stays unread
      } else if (tag.Is(0, "ENDSEC")) {
        Note(i_++, "ENDSEC outside any section dropped");
      } else if (tag.Is(0, "SECTION") && i_ + 1 < t_.size() &&
                 t_[i_ + 1].code == 2) {
        Section();
      } else {
        while (i_ < t_.size()) Copy();  // the reader says what is wrong
      }
    }
    if (!eof) {
      Note(t_.empty() ? 0 : t_.size() - 1, "no EOF at the end; added");
      out_.emplace_back(0, "EOF");
    }
    *out = std::move(out_);
    return std::move(repairs_);
  }

 private:
  void Section() {
    Copy();  // 0 SECTION
    const std::string name(t_[i_].value());
    Copy();  // 2 name
    if (name == "HEADER") {
      while (i_ < t_.size() && t_[i_].code != 0) Copy();
      if (i_ + 1 < t_.size() && t_[i_].Is(0, "ENDSEC") &&
          t_[i_ + 1].code == 9) {
        const size_t at = i_++;
        int moved = 0;
        while (i_ < t_.size() && t_[i_].code != 0) {
          moved += t_[i_].code == 9;
          Copy();
        }
        Note(at, std::to_string(moved) +
                     " header variables after ENDSEC moved into the header");
      }
    } else if (name == "BLOCKS" || name == "TABLES") {
      Nested(name == "BLOCKS" ? "BLOCK" : "TABLE",
             name == "BLOCKS" ? "ENDBLK" : "ENDTAB");
    } else {
      while (i_ < t_.size() && !Ends(t_[i_])) Copy();
    }
    if (i_ < t_.size() && t_[i_].Is(0, "ENDSEC")) {
      Copy();
      return;
    }
    Note(i_ < t_.size() ? i_ : t_.size() - 1,
         "section " + name + " has no ENDSEC; added");
    out_.emplace_back(0, "ENDSEC");
  }

  // Records of a section that opens and closes groups (BLOCK ... ENDBLK,
  // TABLE ... ENDTAB): a group that runs into the next one or the end of
  // the section gets its end record.
  void Nested(std::string_view open, std::string_view close) {
    bool inside = false;
    while (i_ < t_.size() && !Ends(t_[i_])) {
      const Tag& tag = t_[i_];
      if (tag.code == 0 && tag.value() == open) {
        if (inside) Close(close);
        inside = true;
      } else if (tag.code == 0 && tag.value() == close) {
        inside = false;
      }
      Copy();
    }
    if (inside) Close(close);
  }
  void Close(std::string_view close) {
    Note(i_ < t_.size() ? i_ : t_.size() - 1,
         std::string(close == "ENDBLK" ? "block" : "table") + " without " +
             std::string(close) + "; added");
    out_.emplace_back(0, close);
    // Layer 0 is what CAD programs give the end records they write.
    if (close == "ENDBLK") out_.emplace_back(8, "0");
  }

  void Copy() { out_.push_back(t_[i_++]); }
  void Note(size_t at, std::string what) {
    repairs_.push_back(Repair{at, std::move(what)});
  }

  const std::vector<Tag>& t_;
  size_t i_ = 0;
  std::vector<Tag> out_;
  std::vector<Repair> repairs_;
};

}  // namespace

std::vector<Repair> RepairSections(TagFile* file) {
  std::vector<Tag> repaired;
  std::vector<Repair> repairs = SectionRepairer(file->tags).Run(&repaired);
  if (repairs.empty()) return repairs;
  file->tags = std::move(repaired);
  file->starts.clear();
  for (size_t k = 0; k < file->tags.size(); ++k) {
    if (file->tags[k].code == 0) {
      file->starts.push_back(static_cast<uint32_t>(k));
    }
  }
  return repairs;
}

}  // namespace lmt::dxf
