# Makes a man page of a page of the documentation.
#
#   awk -v page=docs/formats/model.md -v version=1.2.3 -f markdown_to_man.awk docs/*.md docs/formats/*.md
#
# All pages are given, so that links become references to man pages. A page says what it is in the manual by a comment,
# <!-- man: NAME SECTION "DESCRIPTION" -->. Understood are headings, paragraphs, lists of one level, code, tables and
# links; other comments are left out. A table of two columns becomes a list of terms, a wider one a table for tbl.

# The name of the file in a path or link.
function lastPart(path) {
    sub(/#.*/, "", path)
    sub(/.*\//, "", path)
    return path
}

# Text of the page as roff reads it: a backslash is itself, and no line begins with a control character.
function escaped(text) {
    gsub(/\\/, "\\e", text)
    return text
}

function guarded(line) {
    return line ~ /^[.']/ ? "\\&" line : line
}

function literal(code) {
    code = escaped(code)
    gsub(/-/, "\\-", code)
    return code
}

function reference(name) {
    return "\\fB" literal(name) "\\fR(" section[name] ")"
}

# [text](target) as the text, and the man page where the target has one.
function link(text, target,    name) {
    name = manName[lastPart(target)]
    return name == "" || name == thisName ? text : text " (" reference(name) ")"
}

function linksResolved(text,    out, part, middle) {
    out = ""
    while (match(text, /\[[^]\[]+\]\([^)]+\)/)) {
        part = substr(text, RSTART + 1, RLENGTH - 2)
        middle = index(part, "](")
        out = out substr(text, 1, RSTART - 1) link(substr(part, 1, middle - 1), substr(part, middle + 2))
        text = substr(text, RSTART + RLENGTH)
    }
    return out text
}

function inlined(text,    out, pieces, count, i) {
    count = split(text, pieces, "`")
    out = ""
    for (i = 1; i <= count; i++) {
        out = out (i % 2 == 1 ? linksResolved(escaped(pieces[i])) : "\\fB" literal(pieces[i]) "\\fR")
    }
    return out
}

function endParagraph() {
    if (paragraph != "") {
        print guarded(inlined(paragraph))
        paragraph = ""
    }
}

function beginCode() {
    endParagraph()
    print ".PP\n.RS 4\n.nf"
}

function endCode() {
    print ".fi\n.RE"
}

function cellsOf(line,    i) {
    sub(/^\| */, "", line)
    sub(/ *\|$/, "", line)
    cellCount = split(line, cells, / +\| +/)
    for (i = 1; i <= cellCount; i++) {
        gsub(/^ +| +$/, "", cells[i])
    }
}

function beginTable(    i, format) {
    endParagraph()
    wide = cellCount > 2
    if (wide) {
        # A terminal has no pages, but groff looks for room on one for each text block of a table, in vain now and then.
        print ".PP\n.if n .pl +200v\n.TS"
        for (i = 1; i <= cellCount; i++) {
            format = format (i > 1 ? " " : "") "lb"
        }
        print format
        gsub(/b/, "", format)
        print format "x."
        tableRow()
    }
}

# A short first cell keeps its width; the others share what is left of the line.
function tableRow(    i) {
    if (wide) {
        for (i = 1; i <= cellCount; i++) {
            if (i == 1 && length(cells[i]) <= 40) {
                printf "%s", guarded(inlined(cells[i]))
            } else {
                printf "%sT{\n%s\nT}", (i > 1 ? "\t" : ""), guarded(inlined(cells[i]))
            }
        }
        print ""
    } else {
        print ".TP\n" guarded(inlined(cells[1])) "\n" guarded(inlined(cells[2]))
    }
}

function endTable() {
    if (wide) {
        print ".TE"
    }
}

function heading(line) {
    endParagraph()
    if (line ~ /^# /) {
        return
    }
    sawSection = 1
    if (line ~ /^### /) {
        print ".SS " inlined(substr(line, 5))
    } else {
        print ".SH " toupper(inlined(substr(line, 4)))
    }
}

# The text between the title and the first section.
function beginDescription() {
    if (!sawSection) {
        print ".SH DESCRIPTION"
        sawSection = 1
    }
}

function textLine(line) {
    if (line == "") {
        endParagraph()
        return
    }
    if (line ~ /^- / || line ~ /^[0-9]+\. /) {
        endParagraph()
        beginDescription()
        print line ~ /^-/ ? ".IP \\(bu 2" : ".IP " substr(line, 1, index(line, " ") - 1) " 4"
        paragraph = substr(line, index(line, " ") + 1)
        return
    }
    if (paragraph == "") {
        beginDescription()
        print ".PP"
    }
    sub(/^ +/, "", line)
    paragraph = paragraph (paragraph == "" ? "" : " ") line
}

function bodyLine(line) {
    if (inFence || inIndented || inTable) {
        if (inFence && line ~ /^```/) {
            inFence = 0
            endCode()
            return
        }
        if (inFence || (inIndented && line ~ /^    /)) {
            print guarded(literal(inFence ? line : substr(line, 5)))
            return
        }
        if (inTable && line ~ /^\|/) {
            if (line !~ /^\|[-|]+$/) {
                cellsOf(line)
                tableRow()
            }
            return
        }
        if (inIndented) {
            endCode()
        } else {
            endTable()
        }
        inIndented = inTable = 0
    }
    if (line ~ /^```/) {
        inFence = 1
        beginCode()
    } else if (line ~ /^    / && paragraph == "") {
        inIndented = 1
        beginCode()
        print guarded(literal(substr(line, 5)))
    } else if (line ~ /^\|/) {
        inTable = 1
        cellsOf(line)
        beginTable()
    } else if (line ~ /^#/) {
        heading(line)
    } else {
        textLine(line)
    }
}

function seeAlso(    i, list) {
    for (i = 1; i <= nameCount; i++) {
        if (names[i] != thisName) {
            list = list (list == "" ? "" : ",\n") reference(names[i])
        }
    }
    if (list != "") {
        print ".SH SEE ALSO\n" list
    }
}

/^<!-- man: / {
    names[++nameCount] = $3
    manName[lastPart(FILENAME)] = $3
    section[$3] = $4
    description[$3] = $0
    sub(/^[^"]*"/, "", description[$3])
    sub(/".*/, "", description[$3])
}

FILENAME == page && /^<!-- / {
    inComment = 1
}

FILENAME == page && !inComment {
    lines[++lineCount] = $0
}

/-->$/ {
    inComment = 0
}

END {
    thisName = manName[lastPart(page)]
    print "'\\\" t"
    print ".TH " toupper(literal(thisName)) " " section[thisName] " \"\" \"quillon " version "\"\n.nh\n.ad l"
    print ".SH NAME\n" literal(thisName) " \\- " description[thisName]
    for (i = 1; i <= lineCount; i++) {
        bodyLine(lines[i])
    }
    bodyLine("")
    seeAlso()
}
