// The command line of the embedded host: the commands the add-in sends.
//
//   "_UCS" "_World" / "_UCS" "_View"        the world UCS / the view's UCS
//   "_Layout" "_Set" name                  makes a layout (or Model) active
//   "(command "_Layout" "_Set" "Layout1")"  the same as a Lisp call
//   "_-Layout _Template" path name         imports a layout from a drawing
//
// Input is split as a command line splits it: at carriage returns, line
// feeds and spaces outside double quotes; an Escape cancels the command it
// ends. Prefixes "_", "-", "." and "+" are dropped from command names and
// options. The whole text is checked before anything runs, so an unknown or
// unsupported command changes nothing and its name is in the refusal.
#include <cctype>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "dxf/encoding.h"
#include "dxf/entity_copy.h"
#include "dxf/layout_edit.h"
#include "dxfhost/session.h"

namespace lmt::dxfhost {
namespace {

struct Token {
  std::string text;
  bool quoted = false;
};

std::string Bare(std::string_view word) {
  size_t i = 0;
  while (i < word.size() && (word[i] == '_' || word[i] == '-' ||
                             word[i] == '.' || word[i] == '+')) {
    ++i;
  }
  std::string out(word.substr(i));
  for (char& c : out) {
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  return out;
}

// Command-line input: returns false for a malformed Lisp call.
bool Tokenize(std::string_view text, std::vector<Token>* out) {
  size_t b = text.find_first_not_of(" \t\r\n");
  if (b != std::string_view::npos && text[b] == '(') {
    // (command "a" "b" ...): every argument is one input; "" is Enter.
    std::string_view body = text.substr(b + 1);
    size_t e = body.rfind(')');
    if (e == std::string_view::npos) return false;
    body = body.substr(0, e);
    size_t i = 0;
    auto skip = [&] {
      while (i < body.size() &&
             std::isspace(static_cast<unsigned char>(body[i]))) {
        ++i;
      }
    };
    skip();
    size_t word_end = i;
    while (word_end < body.size() &&
           !std::isspace(static_cast<unsigned char>(body[word_end])) &&
           body[word_end] != '"') {
      ++word_end;
    }
    if (Bare(body.substr(i, word_end - i)) != "COMMAND") return false;
    i = word_end;
    for (;;) {
      skip();
      if (i >= body.size()) break;
      if (body[i] != '"') return false;
      std::string arg;
      ++i;
      while (i < body.size() && body[i] != '"') {
        if (body[i] == '\\' && i + 1 < body.size()) ++i;
        arg += body[i++];
      }
      if (i >= body.size()) return false;
      ++i;
      out->push_back(Token{arg, true});
    }
    return true;
  }
  std::string current;
  bool quoted = false, in_quotes = false, have = false;
  auto flush = [&] {
    if (have) out->push_back(Token{current, quoted});
    current.clear();
    quoted = have = false;
  };
  for (char c : text) {
    if (in_quotes) {
      if (c == '"') {
        in_quotes = false;
      } else {
        current += c;
      }
      continue;
    }
    if (c == '"') {
      in_quotes = quoted = have = true;
    } else if (c == '\r' || c == '\n') {
      if (!have) out->push_back(Token{"", false});  // a bare Enter
      flush();
    } else if (c == ' ' || c == '\t') {
      flush();
    } else if (c == 27) {
      flush();
      out->push_back(Token{"\x1b", false});
    } else {
      current += c;
      have = true;
    }
  }
  flush();
  return true;
}

using Action = std::function<Status(Drawing&)>;

// The drawing a LAYOUT Template names: a relative path is looked up beside
// the drawing first, then from the working folder.
Result<std::shared_ptr<dxf::Document>> ReadTemplate(const Drawing& d,
                                                    const std::string& file) {
  std::filesystem::path p(file);
  if (p.is_relative() && !d.path.empty()) {
    std::filesystem::path beside =
        std::filesystem::path(d.path).parent_path() / p;
    std::error_code ec;
    if (std::filesystem::exists(beside, ec)) p = beside;
  }
  std::unique_ptr<dxf::Document> doc;
  dxf::Status s = dxf::Document::Load(p.string(), &doc);
  if (!s.ok()) {
    return Status::NotFound("LAYOUT Template: cannot read \"" + file +
                            "\": " + s.message() + "; nothing was changed");
  }
  if (doc->IsR12()) {
    return Status::NotSupported("LAYOUT Template: \"" + file +
                                "\" is an R12 drawing, which has no layouts; "
                                "nothing was changed");
  }
  return std::shared_ptr<dxf::Document>(std::move(doc));
}

// Layout `name` of `from` as a new layout of `d`: its page setup and a copy
// of its entities (the layout's own viewport is the new layout's own).
Status ImportLayout(Drawing& d, dxf::Document& from, const std::string& name) {
  dxf::Layout source =
      dxf::FindLayout(from, dxf::EncodeText(name, dxf::CodePageOf(from)));
  dxf::Layout layout{dxf::Entity()};
  dxf::Status s = dxf::AddLayout(*d.doc, d.Encode(name), &layout);
  d.ForgetLayouts();
  if (!s.ok()) return Status::InvalidArgument(s.message());
  dxf::CopyPageSetup(*d.doc, source, layout);
  if (dxf::Block* block = dxf::LayoutBlock(from, source)) {
    std::vector<dxf::RecordId> ids = block->entities;
    dxf::CopyEntities(from, ids, *d.doc, dxf::LayoutBlock(*d.doc, layout));
  }
  return Status();
}

Status Unknown(std::string_view what) {
  return Status::NotSupported("command \"" + std::string(what) +
                              "\" is not known to the embedded host; nothing "
                              "was changed");
}

}  // namespace

Status RunCommandLine(Drawing& d, std::string_view text) {
  std::vector<Token> tokens;
  if (!Tokenize(text, &tokens)) {
    return Status::InvalidArgument("malformed Lisp expression: " +
                                   std::string(text));
  }
  std::vector<Action> actions;
  size_t i = 0;
  auto next = [&]() -> const Token* {
    if (i < tokens.size() && tokens[i].text != "\x1b") return &tokens[i++];
    return nullptr;
  };
  while (i < tokens.size()) {
    const Token& t = tokens[i++];
    if (t.text.empty() || t.text == "\x1b") continue;  // Enter, Escape
    std::string command = Bare(t.text);
    if (command == "UCS") {
      const Token* option = next();
      std::string o = option ? Bare(option->text) : "";
      if (o.empty() || o == "W" || o == "WORLD") {
        actions.push_back([](Drawing& dr) {
          SetWorldUcs(dr);
          return Status();
        });
      } else if (o == "V" || o == "VIEW") {
        actions.push_back([](Drawing& dr) {
          SetViewUcs(dr);
          return Status();
        });
      } else {
        return Status::NotSupported("UCS option \"" + option->text +
                                    "\" is not supported by the embedded "
                                    "host; nothing was changed");
      }
    } else if (command == "LAYOUT") {
      const Token* option = next();
      std::string o = option ? Bare(option->text) : "";
      if (o == "S" || o == "SET") {
        const Token* name = next();
        std::string layout = name ? name->text : "";
        bool found = false;
        for (const LayoutInfo& info : d.Layouts()) {
          found = found || dxf::EqualsNoCase(info.name, layout);
        }
        if (!found) {
          return Status::NotFound("LAYOUT Set: layout \"" + layout +
                                  "\" does not exist; nothing was changed");
        }
        actions.push_back([layout](Drawing& dr) {
          for (const LayoutInfo& info : dr.Layouts()) {
            if (dxf::EqualsNoCase(info.name, layout)) {
              return ActivateBlock(dr, info.block);
            }
          }
          return Status::NotFound("layout \"" + layout + "\" does not exist");
        });
      } else if (o == "T" || o == "TEMPLATE") {
        const Token* file = next();
        const Token* name = next();
        if (file == nullptr || name == nullptr || file->text.empty() ||
            name->text.empty()) {
          return Status::InvalidArgument(
              "LAYOUT Template needs a drawing file and a layout name; "
              "nothing was changed");
        }
        // Read and checked now, so that a bad file or name changes nothing.
        Result<std::shared_ptr<dxf::Document>> read =
            ReadTemplate(d, file->text);
        if (!read.ok()) return read.status();
        std::shared_ptr<dxf::Document> from = *read;
        std::string layout = name->text;
        dxf::Layout source = dxf::FindLayout(
            *from, dxf::EncodeText(layout, dxf::CodePageOf(*from)));
        if (!source.valid() || source.is_model()) {
          return Status::NotFound("LAYOUT Template: \"" + file->text +
                                  "\" has no layout \"" + layout +
                                  "\"; nothing was changed");
        }
        if (!dxf::IsFreeLayoutName(*d.doc, d.Encode(layout))) {
          return Status::InvalidArgument("LAYOUT Template: layout \"" + layout +
                                         "\" already exists; nothing was "
                                         "changed");
        }
        actions.push_back([from, layout](Drawing& dr) {
          return ImportLayout(dr, *from, layout);
        });
      } else {
        return Status::NotSupported(
            "LAYOUT option \"" + (option ? option->text : std::string()) +
            "\" is not supported by the embedded host; nothing was changed");
      }
    } else {
      return Unknown(t.text);
    }
  }
  // Everything was understood: run it. A layout that does not exist stops
  // the line there, as a CAD program's command would.
  for (const Action& action : actions) {
    if (Status s = action(d); !s.ok()) return s;
  }
  return Status();
}

}  // namespace lmt::dxfhost
