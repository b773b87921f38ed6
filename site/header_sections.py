"""Shows a header to Doxygen with its sections: a plain comment at the start of a line is said of the
functions below it, up to the next one. Its first words are the section's title. The records are left
out, which have pages of their own."""
import pathlib
import re
import sys

SECTION = re.compile(r"^/\* (?!clang-format)(.*?)\*/$", re.DOTALL | re.MULTILINE)

RECORD = re.compile(r"(^/\*\*((?!\*/).)*\*/\n)?^typedef struct \w+ {.*?^} \w+;$", re.DOTALL | re.MULTILINE)
END = re.compile(r"(?=(#ifdef __cplusplus\n}\n#endif\n\n)?#endif\n\Z)")


def with_sections(text):
    ends = iter(["", *["/** @} */\n"] * text.count("\n/* ")])

    def named(match):
        words = re.sub(r"\s*\n \* ?", " ", match[1]).strip()
        title = re.split(r"[.,:]", words)[0]
        return f"{next(ends)}/** @name {title}\n\n{words} */\n/** @{{ */"

    text = text.replace("/**\n", "/** @file\n", 1)
    text, count = SECTION.subn(named, RECORD.sub("", text))
    return END.sub("/** @} */\n", text, count=1) if count else text


print(with_sections(pathlib.Path(sys.argv[1]).read_text("utf-8")))
