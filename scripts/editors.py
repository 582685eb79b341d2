#!/usr/bin/env python3
"""Writes the highlighting for editors from the tables of tokens and built-in functions:

    editors.py source-folder [target-folder]        (default: editors/ of the source folder)"""

import json
import pathlib
import re
import sys

TREE = pathlib.Path(sys.argv[1]).resolve()
TARGET = pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else TREE / "editors"

GROUPS = {  # reserved words by what they are; any other one is a keyword
    "conditional": "if else switch case default".split(),
    "repeat": "for while do".split(),
    "control": "return break continue goto try catch throw".split(),
    "type": """void char short int long float double longdouble bool unsigned wchar_t struct class union enum typedef function
        subroutine IOBJECT BIT UCHAR INT4 INT8 INT16 INT32 INT64 INT128 INT256 UINT4 UINT8 UINT16 UINT32 UINT64 UINT128
        UINT256""".split(),
    "storage": "static extern const volatile register auto inline virtual friend public private protected".split(),
    "constant": "true false".split(),
}
DIRECTIVES = "define undef ifdef ifndef if elif else endif include line".split()
NUMBER = r"\b(0x[0-9a-fA-F]+|[0-9]+\.[0-9]+f?|[0-9]+)[uUlL]?\b"


def reserved_words():
    found = re.findall(r'^RESERVED\(\w+, "(\w+)"\)', (TREE / "src/program/tokens.def").read_text(), re.MULTILINE)
    words = [word for word in found if re.fullmatch(r"[A-Za-z_]\w*", word)]
    groups = {name: [word for word in members if word in words] for name, members in GROUPS.items()}
    told = {word for members in groups.values() for word in members}
    return {**groups, "keyword": [word for word in words if word not in told]}


def built_ins():
    return re.findall(r'^SYSFUNC\("(\w+)"', (TREE / "src/builtins/builtins.def").read_text(), re.MULTILINE)


def wrapped(head, words, width=110):
    lines, line = [], head
    for word in words:
        if len(line) + len(word) + 1 > width:
            lines.append(line)
            line = head
        line += " " + word
    return lines + [line]


def vim_syntax():
    names = {"conditional": "Conditional", "repeat": "Repeat", "control": "Statement", "type": "Type",
             "storage": "StorageClass", "constant": "Boolean", "keyword": "Keyword"}
    lines = ['" Vim syntax file: scripts for morv and vorc. Made by scripts/editors.py from the tables of the language.',
             'if exists("b:current_syntax") | finish | endif', ""]
    for group, words in reserved_words().items():
        lines += wrapped(f"syn keyword morv{names[group]}", words)
    lines += wrapped("syn keyword morvFunction", built_ins())
    lines += [
        r'syn match morvDollar "\$\h\w*"',
        r'syn match morvNumber "\<\(0x\x\+\|\d\+\.\d\+f\=\|\d\+\)[uUlL]\=\>"',
        r'syn match morvEscape contained "\\."',
        r'syn match morvFormat contained "%[-+ #0]*[0-9*]*\(\.[0-9*]*\)\=[hlLqjzt]*[aAeEfFgGxXoucdips%]"',
        r'''syn region morvString start=+"+ skip=+\\.+ end=+"+ oneline contains=morvEscape,morvFormat,@Spell''',
        r"""syn match morvCharacter "'\(\\.[0-9a-fA-F]*\|[^'\\]\)'" """.rstrip(),
        r'syn match morvComment "//.*$" contains=morvTodo,@Spell',
        r'syn region morvComment start="/\*" end="\*/" contains=morvTodo,@Spell',
        "syn keyword morvTodo contained TODO FIXME XXX NOTE",
        r'syn match morvPreProc "^\s*#\s*\(' + r"\|".join(DIRECTIVES) + r')\>"'.replace(")", r"\)", 1),
        r'syn match morvPreProc "\%^#!.*$"',
        'syn sync ccomment morvComment', ""]
    links = {"Function": "Function", "Dollar": "Identifier", "Number": "Number", "Escape": "SpecialChar", "Format": "Special",
             "String": "String", "Character": "Character", "Comment": "Comment", "Todo": "Todo", "PreProc": "PreProc"}
    for group in names.values():
        links[group] = group
    lines += [f"hi def link morv{group} {link}" for group, link in sorted(links.items())]
    return "\n".join(lines + ["", 'let b:current_syntax = "morv"', ""])


def textmate():
    scopes = {"conditional": "keyword.control.conditional", "repeat": "keyword.control.loop", "control": "keyword.control",
              "type": "storage.type", "storage": "storage.modifier", "constant": "constant.language", "keyword": "keyword.other"}

    def match(scope, pattern):
        return {"name": f"{scope}.morv", "match": pattern}

    patterns = [
        {"name": "comment.block.morv", "begin": r"/\*", "end": r"\*/"},
        match("comment.line.double-slash", r"//.*$"),
        match("comment.line.shebang", r"\A#!.*$"),
        match("keyword.control.directive", rf"^\s*#\s*({'|'.join(DIRECTIVES)})\b"),
        {"name": "string.quoted.double.morv", "begin": '"', "end": '"|$', "patterns": [
            match("constant.character.escape", r"\\."),
            match("constant.other.placeholder", r"%[-+ #0]*[0-9*]*(\.[0-9*]*)?[hlLqjzt]*[aAeEfFgGxXoucdips%]")]},
        match("string.quoted.single", r"'(\\.[0-9a-fA-F]*|[^'\\])'"),
        match("variable.other.dollar", r"\$[A-Za-z_]\w*"),
        match("constant.numeric", NUMBER),
        *(match(scopes[group], rf"\b({'|'.join(words)})\b") for group, words in reserved_words().items() if words),
        match("support.function", rf"\b({'|'.join(built_ins())})\b(?=\s*\()"),
        match("entity.name.function", r"\b[A-Za-z_]\w*(?=\s*\()"),
    ]
    return {"name": "MorvScript", "scopeName": "source.morv", "fileTypes": ["morv"],
            "firstLineMatch": r"^#!.*\bmorv\b", "patterns": patterns}


def configuration():
    pairs = [["{", "}"], ["[", "]"], ["(", ")"]]
    return {"comments": {"lineComment": "//", "blockComment": ["/*", "*/"]}, "brackets": pairs,
            "autoClosingPairs": [*pairs, ['"', '"']], "surroundingPairs": [*pairs, ['"', '"']],
            "wordPattern": r"\$?[A-Za-z_]\w*|[0-9]+(\.[0-9]+)?"}


def package():
    version = re.search(r"project\(vorc VERSION ([0-9.]+)", (TREE / "CMakeLists.txt").read_text()).group(1)
    return {"name": "morvscript", "displayName": "MorvScript", "description": "Highlighting for scripts of morv and vorc",
            "version": version, "publisher": "vorc", "private": True, "engines": {"vscode": "^1.60.0"},
            "categories": ["Programming Languages"],
            "files": ["language-configuration.json", "syntaxes", "README.md"],
            "contributes": {
                "languages": [{"id": "morvscript", "aliases": ["MorvScript"], "extensions": [".morv"],
                               "firstLine": r"^#!.*\bmorv\b", "configuration": "./language-configuration.json"}],
                "grammars": [{"language": "morvscript", "scopeName": "source.morv",
                              "path": "./syntaxes/morv.tmLanguage.json"}]}}


def as_json(value):
    return json.dumps(value, indent=2) + "\n"


def files():
    return {
        "vim/syntax/morv.vim": vim_syntax(),
        "vim/ftdetect/morv.vim": "au BufRead,BufNewFile *.morv setfiletype morv\n"
                                 "au BufRead * if getline(1) =~# '^#!.*\\<morv\\>' | set filetype=morv | endif\n",
        "vscode/package.json": as_json(package()),
        "vscode/language-configuration.json": as_json(configuration()),
        "vscode/syntaxes/morv.tmLanguage.json": as_json(textmate()),
    }


for name, text in files().items():
    file = TARGET / name
    file.parent.mkdir(parents=True, exist_ok=True)
    file.write_text(text)
