"""Finds the functions of a C++ file and the small faults that can be planted in each.

A fault is named by its function, its kind and its number among the faults of that kind in the function,
in the order of the source. So it survives when names change, when a function moves within its room, and
when other functions change. A constant of the file counts as a function. The kind "begin" is a statement
that is put at the beginning of the function; it has no replacement of its own.

The sources are laid out by clang-format, which this relies on: an operator between two operands has
blanks on both sides, a template's bracket and a pointer's star do not.
"""

import re
from dataclasses import dataclass

TOKEN = re.compile(
    r"""
    (?P<blank>\s+)
  | (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<directive>^[ \t]*\#(?:[^\n\\]|\\\n|\\.)*)
  | (?P<raw>(?:u8|[uUL])?R"(?P<mark>[^()\s\\]*)\(.*?\)(?P=mark)")
  | (?P<text>(?:u8|[uUL])?"(?:[^"\\\n]|\\.)*")
  | (?P<char>(?:u8|[uUL])?'(?:[^'\\\n]|\\.)+')
  | (?P<number>\.?\d(?:[eEpP][+-]|[\w.']|)*)
  | (?P<name>[A-Za-z_]\w*)
  | (?P<sign><=>|<<=|>>=|\.\.\.|->\*|::|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||\+=|-=|\*=|/=|%=|&=|\|=|\^=|\[\[|\]\]|.)
    """,
    re.X | re.S | re.M,
)

RELATIONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
LOGIC = {"&&": "||", "||": "&&"}
ARITHMETIC = {"+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "+=": "-=", "-=": "+=", "*=": "/=", "/=": "*="}
STEPS = {"++": "--", "--": "++"}
BOOLS = {"true": "false", "false": "true"}
ROUNDING = {"min": "max", "max": "min", "floor": "ceil", "ceil": "floor", "nearbyint": "trunc", "round": "trunc",
            "trunc": "round", "lround": "lrint", "front": "back", "back": "front", "any_of": "all_of",
            "all_of": "any_of", "find_first_of": "find_last_of", "find": "rfind", "rfind": "find"}
NO_CALL = {"return", "throw", "delete", "co_return", "break", "continue", "goto", "using", "if", "for", "while",
           "switch", "else", "do", "case", "default", "static_assert", "try", "catch"}


@dataclass
class Token:
    kind: str
    text: str
    start: int
    end: int


@dataclass
class Fault:
    function: str
    kind: str
    number: int
    start: int
    end: int
    replacement: str

    def name(self):
        return f"{self.function} {self.kind} {self.number}"


def tokens_of(text):
    """The tokens that a compiler for Linux sees."""
    found, compiled = [], [True]
    for match in TOKEN.finditer(text):
        kind = match.lastgroup if match.lastgroup != "mark" else "raw"
        if kind == "directive":
            words = match.group().replace("#", " # ").split()
            if words[1].startswith("if"):
                windows = "_WIN32" in match.group() or "__WXMSW__" in match.group()
                compiled.append(not windows or words[1] == "ifndef" or "!" in match.group())
            elif words[1] in ("else", "elif"):
                compiled[-1] = not compiled[-1]
            elif words[1] == "endif":
                compiled.pop()
        elif kind not in ("blank", "comment") and all(compiled):
            found.append(Token(kind, match.group(), match.start(), match.end()))
    return found


def closing(tokens, opening):
    """The index of the bracket that closes the one at this index."""
    pairs = {"(": ")", "{": "}", "[": "]", "[[": "]]"}
    left, right = tokens[opening].text, pairs[tokens[opening].text]
    depth = 0
    for i in range(opening, len(tokens)):
        depth += (tokens[i].text == left) - (tokens[i].text == right)
        if depth == 0:
            return i
    return len(tokens) - 1


def declared_name(head):
    """The name of the function that these tokens declare, or nothing."""
    for i, token in enumerate(head):
        if token.text != "(" or i == 0:
            continue
        if head[i - 1].kind == "name" and head[i - 1].text not in ("decltype", "noexcept", "alignas"):
            name, k = head[i - 1].text, i - 1
            if k > 0 and head[k - 1].text == "~":
                name, k = "~" + name, k - 1
            while k > 1 and head[k - 1].text == "::" and head[k - 2].kind == "name":
                name, k = head[k - 2].text + "::" + name, k - 2
            return name
        words = [t.text for t in head[:i]]
        if "operator" in words:
            return "".join(words[words.index("operator"):])
    return None


def functions_of(tokens):
    """Yields (name, index of the first token, index of the last one) of every body and constant."""

    def scan(i, end, scope):
        head = i
        while i < end:
            text = tokens[i].text
            if text == ";" and "=" in (words := [t.text for t in tokens[head:i]]) and not (
                {"(", "using", "namespace"} & set(words[: words.index("=")])
            ):
                first = head + words.index("=")
                yield scope + tokens[first - 1].text, first, i  # a constant
                head = i + 1
            elif text == ";" or (text == ":" and tokens[i - 1].text in ("public", "private", "protected")):
                head = i + 1
            elif text in ("(", "[", "[["):
                i = closing(tokens, i)
            elif text == "{":
                last = closing(tokens, i)
                words = [t.text for t in tokens[head:i]]
                name = declared_name(tokens[head:i])
                if "=" in words and "operator" not in words and not (name and ")" in words[: words.index("=")]):
                    pass  # a constant's value
                elif "constexpr" in words and name is None:
                    yield scope + tokens[i - 1].text, i, last  # a constant's value in braces
                elif "namespace" in words or (words and words[0] == "extern"):
                    yield from scan(i + 1, last, scope)
                    head = last + 1
                elif "enum" in words:
                    pass
                elif {"class", "struct", "union"} & set(words) and (name is None or "(" not in words):
                    names = [t.text for t in tokens[head:i] if t.kind == "name"]
                    key = next(k for k, w in enumerate(names) if w in ("class", "struct", "union"))
                    own = next((w for w in names[key + 1:] if w not in ("final", "alignas")), "")
                    yield from scan(i + 1, last, scope + own + "::")
                elif name and ":" in words and tokens[i - 1].kind == "name" and tokens[i - 1].text not in (
                    "const", "noexcept", "override", "final", "try") and last + 1 < end and tokens[last + 1].text in (",", "{"):
                    i = last + 1  # a member's first value
                    if i < end and tokens[i].text == "{":
                        continue
                    i += 1
                    continue
                elif name:
                    yield scope + name, i, last
                    head = last + 1
                i = last
            i += 1

    yield from scan(0, len(tokens), "")


def number_replacement(text):
    if re.fullmatch(r"\d+", text):
        return str(int(text) + 1)
    found = re.fullmatch(r"(\d+)([uUlLzZ]+)", text)
    if found:
        return f"{int(found[1]) + 1}{found[2]}"
    found = re.fullmatch(r"0[xX]([0-9a-fA-F]+)([uUlL]*)", text)
    if found:
        return f"0x{int(found[1], 16) + 1:X}{found[2]}"
    if re.fullmatch(r"[\d.]+(?:[eE][+-]?\d+)?", text):
        return f"({text} + 1)"
    return None


def spaced(text, token):
    return text[token.start - 1].isspace() and text[token.end].isspace()


def arguments(tokens, opening):
    """The index ranges of the arguments of the call whose bracket is at this index."""
    last, start, ranges, i = closing(tokens, opening), opening + 1, [], opening + 1
    while i <= last:
        if tokens[i].text in ("(", "[", "{"):
            i = closing(tokens, i)
        elif tokens[i].text == "," or i == last:
            ranges.append((start, i - 1))
            start = i + 1
        i += 1
    return ranges


ENDS_TERM = {"+", "-", "<", ">", "<=", ">=", "==", "!=", "&&", "||", "?", ":", ",", ";", "=", "<<"}
ENDS_OPERAND = {"&&", "||", "?", ":", ",", ";", "=", "return", "{", "}", "<<"}


def operand(tokens, i, step, ends=ENDS_OPERAND):
    """The index of the farthest token of the operand that begins beside an operator, in one direction."""
    depth, k = 0, i
    opening, shutting = ({")", "]"}, {"(", "["}) if step < 0 else ({"(", "["}, {")", "]"})
    while True:
        k += step
        text = tokens[k].text
        if depth == 0 and (text in ends or text in shutting):
            return k - step
        if text == "{" or text == "}":
            return None
        depth += (text in opening) - (text in shutting)


def choice(text, tokens, i):
    """Start, end and the exchanged alternatives of the "?" at this index; nothing when they are nested."""
    k = operand(tokens, i, 1)
    if k is None or tokens[k + 1].text != ":":
        return None
    end = operand(tokens, k + 1, 1)
    if end is None or tokens[end + 1].text in ("?", ":", "&&", "||"):
        return None
    one = text[tokens[i + 1].start:tokens[k].end]
    two = text[tokens[k + 2].start:tokens[end].end]
    return tokens[i + 1].start, tokens[end].end, f"{two} : {one}"


def assignment(tokens, i):
    """The index of the end of the statement here if it assigns to something that exists."""
    k = i
    while tokens[k].kind == "name" or tokens[k].text in (".", "->", "["):
        k = closing(tokens, k) if tokens[k].text == "[" else k
        k += 1
        if tokens[k - 1].kind == "name" and tokens[k].kind == "name":
            return None  # a declaration
    if tokens[k].text not in ("=", "+=", "-=", "|=") or k == i:
        return None
    while tokens[k].text not in (";", "{"):
        k = closing(tokens, k) if tokens[k].text in ("(", "[") else k
        k += 1
    return k if tokens[k].text == ";" else None


def points(text, tokens, first, last):
    """Yields (kind, start, end, replacement) of the faults between two indices."""
    i = first
    while i <= last:
        token, before, after = tokens[i], tokens[i - 1], tokens[i + 1]
        sign = token.text
        if sign == "[[":
            i = closing(tokens, i)
        elif token.kind == "sign" and sign in RELATIONS and spaced(text, token):
            yield "relation", token.start, token.end, RELATIONS[sign]
        elif token.kind == "sign" and sign in LOGIC and spaced(text, token):
            yield "logic", token.start, token.end, LOGIC[sign]
            left, right = operand(tokens, i, -1), operand(tokens, i, 1)
            if left is not None:
                yield "left", tokens[left].start, after.start, ""
            if right is not None:
                yield "right", before.end, tokens[right].end, ""
        elif sign == "?" and choice(text, tokens, i):
            yield "choice", *choice(text, tokens, i)
        elif sign == "!" and not text[token.end].isspace():
            yield "negation", token.start, token.end, ""
        elif token.kind == "sign" and sign in ARITHMETIC and spaced(text, token):
            if "text" not in (before.kind, after.kind) and "raw" not in (before.kind, after.kind):
                yield "arithmetic", token.start, token.end, ARITHMETIC[sign]
                end = operand(tokens, i, 1, ENDS_TERM)
                if sign in "+-" and end is not None:
                    yield "term", before.end, tokens[end].end, ""
        elif sign in STEPS:
            yield "step", token.start, token.end, STEPS[sign]
        elif token.kind == "number" and number_replacement(sign):
            yield "number", token.start, token.end, number_replacement(sign)
        elif sign in BOOLS:
            yield "bool", token.start, token.end, BOOLS[sign]
        elif sign in ROUNDING and after.text in ("(", "<"):
            yield "name", token.start, token.end, ROUNDING[sign]
        if sign in ("if", "while") and after.text == "(":
            end = closing(tokens, i + 1)
            if not any(t.text in (";", "=") for t in tokens[i + 2:end]):
                condition = tokens[i + 2].start, tokens[end - 1].end
                if sign == "if":
                    yield "always", *condition, "true"
                yield "never", *condition, "false"
                words = text[condition[0]:condition[1]]
                yield "negate", *condition, f"!{words}" if re.fullmatch(r"[\w.]+", words) else f"!({words})"
        if before.text in (";", "{", "}", ")") and token.kind == "name" and sign not in NO_CALL:
            end = assignment(tokens, i)
            if end:
                yield "assignment", token.start, tokens[end].start, ""
            k = i  # a statement that is one call: names, dots, arrows, and a bracket at its end
            while tokens[k].kind == "name" or tokens[k].text in (".", "->", "::"):
                k += 1
            if tokens[k].text == "(" and tokens[k - 1].kind == "name" and (k - i) % 2 == 1:
                end = closing(tokens, k)
                if tokens[end + 1].text == ";":
                    yield "call", token.start, tokens[end].end, ""
        if sign == "(" and before.kind == "name" and before.text not in NO_CALL:
            ranges = arguments(tokens, i)
            if len(ranges) >= 2 and all(b >= a for a, b in ranges[:2]):
                (a, b), (c, d) = ranges[:2]
                one, two = text[tokens[a].start:tokens[b].end], text[tokens[c].start:tokens[d].end]
                if one != two and "text" not in (tokens[a].kind, tokens[c].kind):
                    middle = text[tokens[b].end:tokens[c].start]
                    yield "swap", tokens[a].start, tokens[d].end, two + middle + one
        i += 1


def faults_of(text):
    """Every fault that can be planted in this source, in its order."""
    tokens = tokens_of(text)
    counts, found = {}, []
    for function, first, last in functions_of(tokens):
        if tokens[first].text == "{":
            found.append(Fault(function, "begin", 1, tokens[first].end, tokens[first].end, ""))
        for kind, start, end, replacement in points(text, tokens, first + 1, last - 1):
            number = counts[function, kind] = counts.get((function, kind), 0) + 1
            found.append(Fault(function, kind, number, start, end, replacement))
    return found


def planted(text, fault):
    return text[:fault.start] + fault.replacement + text[fault.end:]
