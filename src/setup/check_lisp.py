"""Checks a loader file for CAD programs with AutoLISP without running one.

    check_lisp.py FILE COMMAND

The file must read as complete forms (balanced parentheses, closed strings),
define the command (defun c:COMMAND), and call only functions it defines
itself, core AutoLISP functions that every family with AutoLISP offers, and
vl- functions where it first asks whether they exist: (if vl-name ...).
Prints what is wrong and exits 1, or prints "ok".
"""
import re
import sys

# Core AutoLISP that all the families' interpreters provide.
PORTABLE = {
    "1+", "1-", "alert", "and", "atoi", "car", "cdr", "cond", "cons",
    "defun", "eq", "equal", "findfile", "foreach", "getvar", "if", "itoa",
    "length", "list", "member", "not", "nth", "null", "or", "princ",
    "progn", "prompt", "repeat", "setq", "startapp", "strcase", "strcat",
    "strlen", "substr", "while", "=", "/=", "<", ">", "<=", ">=", "+", "-",
}

TOKEN = re.compile(r'\s+|;[^\n]*|"(?:\\.|[^"\\])*"|\(|\)|\'|[^\s()\';"]+|"')


def tokens(text):
    pos = 0
    while pos < len(text):
        match = TOKEN.match(text, pos)
        token = match.group(0)
        if token == '"':
            raise ValueError(f"unclosed string at offset {pos}")
        pos = match.end()
        if not token.isspace() and not token.startswith(";"):
            yield token


def read_forms(text):
    """The top-level forms as nested lists of tokens."""
    stack = [[]]
    for token in tokens(text):
        if token == "(":
            stack.append([])
        elif token == ")":
            if len(stack) == 1:
                raise ValueError("a ')' closes nothing")
            form = stack.pop()
            stack[-1].append(form)
        elif token != "'":
            stack[-1].append(token)
    if len(stack) != 1:
        raise ValueError(f"{len(stack) - 1} '(' left open")
    return stack[0]


def problems(forms, command):
    defined = set()
    calls = []  # (name, names guarded around the call)

    def walk(form, guarded):
        if not isinstance(form, list) or not form:
            return
        head = form[0]
        # A list of data such as '("a" "b") starts with no symbol.
        if isinstance(head, str) and not head.startswith('"'):
            calls.append((head.lower(), guarded))
            if head.lower() == "defun" and len(form) > 1:
                defined.add(form[1].lower())
                # The argument list is no call.
                for part in form[3:]:
                    walk(part, guarded)
                return
            if head.lower() == "cond":
                for clause in form[1:]:
                    if isinstance(clause, list):
                        for part in clause:
                            walk(part, guarded)
                return
            if head.lower() == "if" and len(form) > 1 and isinstance(form[1], str):
                guarded = guarded | {form[1].lower()}
        for part in form[1:]:
            walk(part, guarded)

    for form in forms:
        walk(form, frozenset())
    found = []
    if "c:" + command.lower() not in defined:
        found.append(f"no (defun c:{command} ...)")
    for name, guarded in calls:
        if name in defined or name in PORTABLE:
            continue
        if name.startswith("vl-") and name in guarded:
            continue
        if name.startswith("vl-"):
            found.append(f"{name} is called without (if {name} ...) around it")
        else:
            found.append(f"{name} is not a portable AutoLISP function")
    return sorted(set(found))


def main():
    path, command = sys.argv[1], sys.argv[2]
    with open(path, encoding="utf-8") as f:
        text = f.read()
    try:
        found = problems(read_forms(text), command)
    except ValueError as error:
        found = [str(error)]
    for problem in found:
        print(f"{path}: {problem}")
    if found:
        return 1
    print("ok")
    return 0


if __name__ == "__main__":
    sys.exit(main())
