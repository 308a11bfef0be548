#include "dxfhost/filter.h"

#include <cctype>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

#include "dxf/tag.h"
#include "dxfhost/wildcard.h"

namespace lmt::dxfhost {

struct CompiledFilter::Node {
  enum class Kind { kAnd, kOr, kNot, kXor, kTest };
  Kind kind = Kind::kAnd;
  std::vector<Node> children;
  // kTest
  int code = 0;
  // The comparison, "=" unless a -4 operator came before.
  enum class Op : uint8_t {
    kAny,
    kEqual,
    kNotEqual,
    kLess,
    kLessOrEqual,
    kGreater,
    kGreaterOrEqual
  };
  Op op = Op::kEqual;
  std::string text;              // the value as text
  std::optional<double> number;  // the value as a number, when it is one
  // `text` holds no wildcard character, so it matches only itself.
  bool literal = false;
};

namespace {

using Node = CompiledFilter::Node;

std::string ValueText(const host::FilterValue& v) {
  if (const auto* s = std::get_if<std::string>(&v)) return *s;
  if (const auto* i = std::get_if<int16_t>(&v)) return std::to_string(*i);
  if (const auto* i = std::get_if<int32_t>(&v)) return std::to_string(*i);
  return dxf::FormatDouble(std::get<double>(v));
}

std::string Upper(std::string_view s) {
  std::string out(s);
  for (char& c : out) {
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  return out;
}

std::optional<double> NumberOf(int code, std::string_view text) {
  std::string t = Upper(text);
  if (code == 62) {
    if (t == "BYLAYER") return 256;
    if (t == "BYBLOCK") return 0;
  }
  if (code == 370) {
    if (t == "BYLAYER") return -1;
    if (t == "BYBLOCK") return -2;
    if (t == "DEFAULT") return -3;
  }
  size_t b = text.find_first_not_of(' ');
  size_t e = text.find_last_not_of(' ');
  if (b == std::string_view::npos) return std::nullopt;
  return dxf::ParseDouble(text.substr(b, e - b + 1));
}

bool IsTextCode(int code) {
  return dxf::TypeOfCode(code) == dxf::ValueType::kString ||
         dxf::TypeOfCode(code) == dxf::ValueType::kHandle;
}

// The entity's value for `code`, with the defaults of absent codes.
std::optional<std::string> EntityValue(const dxf::Entity& e, int code,
                                       const std::string& space) {
  switch (code) {
    case 0:
      return std::string(e.type());
    case 410:
      return space;
    case 8:
      return std::string(e.layer());
    case 6:
      return std::string(e.linetype());
    case 62:
      return std::to_string(e.color());
    case 370:
      return std::to_string(e.lineweight());
    case 67:
      return std::to_string(e.GetInt(67, 0));
    default:
      break;
  }
  std::optional<std::string_view> v = e.Get(code);
  if (!v) return std::nullopt;
  return std::string(*v);
}

// The raw file text of a text code, without a copy.
std::optional<std::string_view> RawText(const dxf::Entity& e, int code) {
  switch (code) {
    case 0:
      return e.type();
    case 8:
      return e.layer();
    case 6:
      return e.linetype();
    default:
      return e.Get(code);
  }
}

// True when Decode would return `raw` unchanged: no escape, no code-page
// byte.
bool IsPlain(std::string_view raw) {
  for (char c : raw) {
    if (c == '\\' || static_cast<unsigned char>(c) >= 0x80) return false;
  }
  return true;
}

bool Test(const Node& n, const Drawing& d, const dxf::Entity& e,
          const std::string& space) {
  if (n.op == Node::Op::kAny) return true;
  // Whole-drawing selections test every entity: a literal name against
  // plain text needs neither copies nor decoding (same answer as below).
  if (n.literal && n.code != 410 && n.code != 62 && IsTextCode(n.code)) {
    std::optional<std::string_view> raw = RawText(e, n.code);
    if (!raw) return false;
    if (IsPlain(*raw)) {
      bool match = dxf::EqualsNoCase(*raw, n.text);
      if (n.op == Node::Op::kNotEqual) return !match;
      return match;
    }
  }
  if (n.literal && n.code == 410) {
    // The layout's name is decoded already; a literal matches it as the
    // wildcard match would, letter for letter without regard to case.
    bool match = dxf::EqualsNoCase(space, n.text);
    if (n.op == Node::Op::kNotEqual) return !match;
    return match;
  }
  std::optional<std::string> value = EntityValue(e, n.code, space);
  if (!value) return false;
  if (IsTextCode(n.code) && n.code != 62) {
    // 410 is already the layout's decoded name.
    bool match =
        WildcardMatch(n.code == 410 ? *value : d.Decode(*value), n.text);
    if (n.op == Node::Op::kNotEqual) return !match;
    return match;
  }
  std::optional<double> have = NumberOf(n.code, *value);
  if (!have || !n.number) return false;
  double a = *have, b = *n.number;
  constexpr double kEps = 1e-9;
  switch (n.op) {
    case Node::Op::kAny:
      return true;
    case Node::Op::kEqual:
      return std::fabs(a - b) <= kEps;
    case Node::Op::kNotEqual:
      return std::fabs(a - b) > kEps;
    case Node::Op::kLess:
      return a < b;
    case Node::Op::kLessOrEqual:
      return a <= b + kEps;
    case Node::Op::kGreater:
      return a > b;
    case Node::Op::kGreaterOrEqual:
      return a >= b - kEps;
  }
  return false;
}

bool Eval(const Node& n, const Drawing& d, const dxf::Entity& e,
          const std::string& space) {
  switch (n.kind) {
    case Node::Kind::kTest:
      return Test(n, d, e, space);
    case Node::Kind::kAnd:
      for (const Node& c : n.children) {
        if (!Eval(c, d, e, space)) return false;
      }
      return true;
    case Node::Kind::kOr:
      for (const Node& c : n.children) {
        if (Eval(c, d, e, space)) return true;
      }
      return false;
    case Node::Kind::kNot:
      return !Eval(n.children[0], d, e, space);
    case Node::Kind::kXor:
      return Eval(n.children[0], d, e, space) !=
             Eval(n.children[1], d, e, space);
  }
  return false;
}

// REQUIRES: IsComparison(op).
Node::Op OpOf(const std::string& op) {
  if (op == "*") return Node::Op::kAny;
  if (op == "!=" || op == "/=" || op == "<>") return Node::Op::kNotEqual;
  if (op == "<") return Node::Op::kLess;
  if (op == "<=") return Node::Op::kLessOrEqual;
  if (op == ">") return Node::Op::kGreater;
  if (op == ">=") return Node::Op::kGreaterOrEqual;
  return Node::Op::kEqual;
}

bool IsComparison(const std::string& op) {
  return op == "=" || op == "!=" || op == "/=" || op == "<>" || op == "<" ||
         op == "<=" || op == ">" || op == ">=" || op == "*";
}

}  // namespace

Result<CompiledFilter> CompiledFilter::Compile(
    const host::SelectionFilter& filter) {
  if (filter.codes.size() != filter.values.size()) {
    return Status::InvalidArgument(
        "selection filter: codes and values differ in length");
  }
  struct Open {
    Node node;
    std::string closer;
  };
  std::vector<Open> stack;
  stack.push_back(Open{Node{}, ""});
  std::string pending_op;
  for (size_t i = 0; i < filter.codes.size(); ++i) {
    int code = filter.codes[i];
    std::string text = ValueText(filter.values[i]);
    if (code == -4) {
      std::string op = Upper(text);
      if (!pending_op.empty()) {
        return Status::InvalidArgument("selection filter: comparison \"" +
                                       pending_op + "\" has no operand");
      }
      if (op == "<AND" || op == "<OR" || op == "<NOT" || op == "<XOR") {
        Node n;
        n.kind = op == "<AND"   ? Node::Kind::kAnd
                 : op == "<OR"  ? Node::Kind::kOr
                 : op == "<NOT" ? Node::Kind::kNot
                                : Node::Kind::kXor;
        stack.push_back(Open{std::move(n), op.substr(1) + ">"});
      } else if (op == "AND>" || op == "OR>" || op == "NOT>" || op == "XOR>") {
        if (stack.size() < 2 || stack.back().closer != op) {
          return Status::InvalidArgument("selection filter: \"" + text +
                                         "\" closes no open group");
        }
        Node done = std::move(stack.back().node);
        stack.pop_back();
        if ((done.kind == Node::Kind::kNot && done.children.size() != 1) ||
            (done.kind == Node::Kind::kXor && done.children.size() != 2)) {
          return Status::InvalidArgument("selection filter: \"" + text +
                                         "\" has the wrong operand count");
        }
        stack.back().node.children.push_back(std::move(done));
      } else if (IsComparison(op)) {
        pending_op = op;
      } else {
        return Status::InvalidArgument("selection filter: unknown operator \"" +
                                       text + "\"");
      }
      continue;
    }
    Node test;
    test.kind = Node::Kind::kTest;
    test.code = code;
    test.op = pending_op.empty() ? Node::Op::kEqual : OpOf(pending_op);
    pending_op.clear();
    test.text = text;
    test.number = NumberOf(code, text);
    test.literal = text.find_first_of("*?#@.~[]`,") == std::string::npos;
    stack.back().node.children.push_back(std::move(test));
  }
  if (stack.size() != 1) {
    return Status::InvalidArgument("selection filter: \"" +
                                   stack.back().closer + "\" is missing");
  }
  if (!pending_op.empty()) {
    return Status::InvalidArgument("selection filter: comparison \"" +
                                   pending_op + "\" has no operand");
  }
  CompiledFilter out;
  out.root_ = std::make_shared<const Node>(std::move(stack.back().node));
  return out;
}

bool CompiledFilter::Matches(const Drawing& d, const dxf::Entity& e,
                             const std::string& space) const {
  return Eval(*root_, d, e, space);
}

namespace {

// The top-level `0 name` pair that every match must pass, or null.
const Node* TypeTest(const Node& root) {
  if (root.kind != Node::Kind::kAnd) return nullptr;
  for (const Node& n : root.children) {
    if (n.kind == Node::Kind::kTest && n.code == 0 &&
        n.op == Node::Op::kEqual && n.literal) {
      return &n;
    }
  }
  return nullptr;
}

}  // namespace

bool CompiledFilter::NamesOneType() const {
  return TypeTest(*root_) != nullptr;
}

bool CompiledFilter::AdmitsType(std::string_view type) const {
  const Node* test = TypeTest(*root_);
  // A type that decoding could change is left to Matches, as Test does.
  return test == nullptr || !IsPlain(type) ||
         dxf::EqualsNoCase(type, test->text);
}

}  // namespace lmt::dxfhost
