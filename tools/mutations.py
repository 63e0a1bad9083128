"""Small ways to break a C++ source, each as one change of its text.

The source is read as a row of tokens; .clang-format makes the rest simple: a binary operator has a blank on both sides,
the brackets of a template have not.
"""

import re
from dataclasses import dataclass

TOKEN = re.compile(r"""
    (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<directive>^[ \t]*\#(?:[^\n\\]|\\.)*)
  | (?P<string>(?:u8|[LuU])?R"(?P<mark>[^(]*)\(.*?\)(?P=mark)"|(?:u8|[LuU])?"(?:[^"\\]|\\.)*")
  | (?P<character>(?:u8|[LuU])?'(?:[^'\\]|\\.)*')
  | (?P<number>\.?\d(?:[eEpP][+-]|[\w.']|)*)
  | (?P<word>[^\W\d]\w*)
  | (?P<operator><=>|<<=|>>=|->\*|\.\.\.|::|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|[^\s\w])
""", re.VERBOSE | re.MULTILINE | re.DOTALL)

# What stands for a binary operator, in its place.
INSTEAD = {"==": ["!="], "!=": ["=="], "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
           "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["*"], "&": ["|"], "|": ["&"],
           "+=": ["-="], "-=": ["+="], "<<": [">>"], ">>": ["<<"]}
WORDS = {"true": "false", "false": "true", "min": "max", "max": "min"}
PAIRS = {"(": ")", "[": "]", "{": "}"}
DECLARATION_WORDS = {"const", "static", "constexpr", "auto", "using", "typename", "struct", "enum", "class", "template",
                     "public", "private", "protected"}
# The label under which a procedure reports its failures: tests/source holds those to the letter.
LABEL = re.compile(r", (?:module|class) ", re.IGNORECASE)


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int

    @property
    def end(self):
        return self.start + len(self.text)


@dataclass(frozen=True)
class Mutation:
    """A change of the text from start to end; kind says what it breaks."""
    kind: str
    start: int
    end: int
    text: str

    def applied_to(self, source):
        return source[:self.start] + self.text + source[self.end:]

    def lines(self, source):
        """The first line that differs, as it was and as it is, and its number."""
        number = source.count("\n", 0, self.start)
        begin = source.rfind("\n", 0, self.start) + 1
        before, after = source[begin:].split("\n"), self.applied_to(source)[begin:].split("\n")
        return number + 1, before[0].strip(), after[0].strip()


def tokens_of(source):
    found = [Token(match.lastgroup if match.lastgroup != "mark" else "string", match.group(0), match.start())
             for match in TOKEN.finditer(source)]
    return [token for token in found if token.kind not in ("comment", "directive")]


class Reader:
    """Walks through the tokens of a source and collects its mutations."""

    def __init__(self, source):
        self.source = source
        self.tokens = tokens_of(source)
        self.partner = self._partners()
        self.found = []

    def all(self):
        self._functions()
        for index, token in enumerate(self.tokens):
            self._change_token(index, token)
        unique = {(mutation.start, mutation.end, mutation.text): mutation for mutation in self.found}
        return sorted(unique.values(), key=lambda mutation: (mutation.start, mutation.end, mutation.text))

    def _partners(self):
        partner, open_ones = {}, []
        for index, token in enumerate(self.tokens):
            if token.text in PAIRS:
                open_ones.append(index)
            elif token.text in PAIRS.values() and open_ones:
                partner[open_ones[-1]] = index
                partner[index] = open_ones.pop()
        return partner

    def _add(self, kind, start, end, text):
        if self.source[start:end] != text:
            self.found.append(Mutation(kind, start, end, text))

    def _text(self, index):
        return self.tokens[index].text if 0 <= index < len(self.tokens) else ""

    # Expressions

    def _change_token(self, index, token):
        if token.kind == "operator":
            self._change_operator(index, token)
        elif token.kind == "word" and token.text in WORDS:
            self._add("constant", token.start, token.end, WORDS[token.text])
        elif token.kind == "number":
            self._change_number(token)
        elif token.kind == "string" and not token.text.endswith('""') and not LABEL.search(token.text):
            self._add("constant", token.start, token.end, token.text[:token.text.index('"')] + '""')
        elif token.kind == "character":
            self._add("constant", token.start, token.end, token.text[:token.text.index("'")] + r"'\1'")

    def _change_operator(self, index, token):
        around = self.source[token.start - 1:token.start] + self.source[token.end:token.end + 1]
        if token.text in INSTEAD and around[:1] in " \n" and around[1:] in " \n" and self._text(index - 1) != "operator":
            for other in INSTEAD[token.text]:
                self._add("operator", token.start, token.end, other)
        elif token.text == "!" and self._text(index + 1) != "=":
            self._add("condition", token.start, token.end, "")
        elif token.text in ("++", "--"):
            self._add("operator", token.start, token.end, {"++": "--", "--": "++"}[token.text])
        elif token.text == "?":
            self._swap_branches(index)

    def _change_number(self, token):
        whole = re.fullmatch(r"(0[xX][\da-fA-F']+|[\d']+)([uUlLzZ]*)", token.text)
        if whole:
            value = int(whole[1].replace("'", ""), 0 if whole[1][:2] in ("0x", "0X") else 10)
            self._add("constant", token.start, token.end, f"{0 if value == 1 else value + 1}{whole[2]}")
        elif re.fullmatch(r"[\d.]+", token.text):
            self._add("constant", token.start, token.end, str(2 * float(token.text) + 1))

    def _swap_branches(self, question):
        """Of a ? b : c."""
        colon = self._find(question + 1, ":")
        end = self._find(colon + 1, ";", ",", ")", "]", "}") if colon else None
        if end:
            first = self.source[self.tokens[question + 1].start:self.tokens[colon - 1].end]
            second = self.source[self.tokens[colon + 1].start:self.tokens[end - 1].end]
            between = self.source[self.tokens[colon - 1].end:self.tokens[colon + 1].start]
            self._add("branches", self.tokens[question + 1].start, self.tokens[end - 1].end, second + between + first)

    def _find(self, index, *texts):
        """The next of these tokens at this depth."""
        while index < len(self.tokens):
            if self.tokens[index].text in texts:
                return index
            if self.tokens[index].text in PAIRS.values():
                return None
            index = self.partner.get(index, index) + 1 if self.tokens[index].text in PAIRS else index + 1
        return None

    # Statements

    def _functions(self):
        index = 0
        while index < len(self.tokens):
            if self.tokens[index].text == "{" and index in self.partner and self._begins_code(index):
                self._leave_at_once(index)
                self._block(index)
                index = self.partner[index]
            index += 1

    def _begins_code(self, brace):
        before = self._text(brace - 1)
        return before in (")", "]", "const", "noexcept", "override", "mutable", "else", "do", "try") or \
            before == "}" and self._initialises(brace - 1)

    def _initialises(self, brace):
        """Whether this is the end of the last initialiser of a constructor's fields."""
        return self._text(self.partner.get(brace, 0) - 2) in (":", ",")

    def _leave_at_once(self, brace):
        """A function that does nothing. Of a constructor's fields nothing is known here, so constructors stay."""
        index = brace - 1
        while self._text(index) in ("const", "noexcept", "override"):
            index -= 1
        if self._text(index) != ")" or index not in self.partner:
            return
        name = self.partner[index] - 1
        while self._text(name - 1) == "::":
            name -= 2
        kind = self._text(name - 1)
        if self.tokens[name].kind != "word" or kind in (":", ",", "~", "", ";", "}", "{", "]"):
            return
        self._add("early return", self.tokens[brace].end, self.tokens[brace].end,
                  " return;" if kind == "void" else " return {};")

    def _block(self, brace):
        index, end = brace + 1, self.partner[brace]
        while index < end:
            index = self._statement(index)

    def _statement(self, index):
        """Reads one statement and gives the token after it."""
        word = self._text(index)
        if word == "{":
            self._block(index)
            return self.partner[index] + 1
        if word in ("if", "while", "for", "switch", "catch"):
            paren = index + 1 if self._text(index + 1) == "(" else index + 2
            if word in ("if", "while"):
                self._negate(paren)
            self._code_within(paren, self.partner[paren])
            return self._statement(self.partner[paren] + 1)
        if word in ("else", "do", "try"):
            return self._statement(index + 1)
        if word in ("case", "default"):
            return self._find(index, ":") + 1
        end = self._find(index, ";")
        if end is None:
            return len(self.tokens)
        self._code_within(index, end)
        self._change_statement(index, end)
        return end + 1

    def _code_within(self, begin, end):
        """The bodies of lambdas."""
        index = begin
        while index < end:
            if self.tokens[index].text == "{" and self._text(index - 1) in (")", "]", "mutable", "noexcept"):
                self._block(index)
                index = self.partner[index]
            index += 1

    def _negate(self, paren):
        end = self.partner[paren]
        begin = self._find(paren + 1, ";")
        begin = paren + 1 if begin is None else begin + 1
        if not self._declares(begin, end) and not self._turns_with_one_token(begin, end):
            start, stop = self.tokens[begin].start, self.tokens[end - 1].end
            self._add("condition", start, stop, f"!({self.source[start:stop]})")

    def _turns_with_one_token(self, begin, end):
        """Whether another mutation is the condition's negation already."""
        def has(*operators):
            found = self._find(begin, *operators)
            return found is not None and found < end

        return not has("&&", "||") and (self._text(begin) == "!" or has("==", "!=", "<", "<=", ">", ">="))

    def _declares(self, begin, end):
        """Whether the tokens begin with a type and a name."""
        if self._text(begin) in DECLARATION_WORDS:
            return True
        index = begin
        while index < end and (self.tokens[index].kind in ("word", "number")
                               or self.tokens[index].text in ("::", "<", ">", "&", "*", ",")):
            index += 1
            if self.tokens[index].kind == "word" and (self.tokens[index - 1].kind == "word"
                                                      or self.tokens[index - 1].text in (">", "&", "*")):
                return True
        return False

    def _change_statement(self, begin, end):
        first, start = self._text(begin), self.tokens[begin].start
        if first == "return":
            if end == begin + 1:
                self._add("statement", start, self.tokens[end].end, ";")
            elif end > begin + 2 and self.source[self.tokens[begin + 1].start:self.tokens[end].start] != "std::nullopt":
                self._add("early return", start, self.tokens[end].end, "return {};")
        elif end > begin and not self._declares(begin, end) and "reserve" not in map(self._text, range(begin, end)):
            self._add("statement", start, self.tokens[end].end, ";")


def mutations_of(source):
    """Every mutation of a source, in the order of the text."""
    return Reader(source).all()
