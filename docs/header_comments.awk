# Makes what stands in a header plain to Doxygen, which wants words for every declaration.
#
# - A comment holds for all overloads of a function below it, up to a blank line, and a comment that says "each" for all
#   declarations there.
# - Members that every class has get words: copies, moves, destruction, comparison of all fields, loops over elements;
#   so do words of a file, names for records, and directories, which say what they are.
# - What is protected counts as private: the reference is for those who use a class.
# - Each header counts as described: Doxygen is silent about the functions of a file that is not.

function indentOf(line) {
    match(line, /^ */)
    return RLENGTH
}

# The name that a line declares, or nothing.
function declaredName(line) {
    sub(/[(;={].*/, "", line)
    sub(/ +$/, "", line)
    sub(/.*[ *&]/, "", line)
    return line
}

function describe(text) {
    print substr($0, 1, indentOf($0)) "/// " text
    described = 1
}

function describeSpecial(line) {
    sub(/^ *(explicit |virtual |friend )*/, "", line)
    if (index(line, name "(const " name "&") == 1 || line ~ /^[A-Za-z_<>]+& operator=\(/) {
        describe(line ~ /&&/ ? "Moves." : "Copies.")
    } else if (index(line, name "(" name "&&") == 1) {
        describe("Moves.")
    } else if (line ~ /^~/) {
        describe("Frees what it owns.")
    } else if (index(line, name "()") == 1) {
        describe("An empty one, or with what the fields say.")
    } else if (line ~ / (begin|end)\(\)/) {
        describe("For range-based loops.")
    } else if (line ~ /^bool operator==\(const [A-Za-z_]+&, const [A-Za-z_]+&\) = default/) {
        describe("Compares all fields.")
    } else if (line ~ /constexpr const char\* [A-Za-z]+ = ".*";/) {
        match(line, /".*"/)
        describe("The text " substr(line, RSTART, RLENGTH) " of the file.")
    } else if (line ~ /^using [A-Za-z_]+ = scaleDef::/) {
        describe("The record of this name.")
    } else if (line ~ /\{ return dataSubDir\("/) {
        match(line, /".*"/)
        describe("The directory " substr(line, RSTART, RLENGTH) " below the data directory.")
    }
}

FNR == 1 {
    # In the same line, so that the numbers of lines stay.
    printf "/** @file */ "
}

/^ *(class|struct) [A-Za-z_]+/ && !/;$/ {
    name = $2
    sub(/[^A-Za-z_].*/, "", name)
}

/^ *\/\/\// {
    if (!described) {
        comment = ""
    }
    comment = comment $0 "\n"
    commentIndent = indentOf($0)
    commentName = ""
    described = 1
    print
    next
}

{
    sub(/^protected:/, "private:")
}

/^ *(\/\/ .*)?$/ || /^ *(public|private|protected):/ {
    comment = ""
    described = 0
    print
    next
}

{
    startsDeclaration = depth == outer && previousEnds
    if (!described && startsDeclaration && $0 !~ /\/\/\/</ && $0 !~ /^ *[}:#]/) {
        if (comment != "" && indentOf($0) == commentIndent &&
            ((comment ~ /[Ee]ach/ && $0 !~ /^ *friend/) || declaredName($0) == commentName)) {
            printf "%s", comment
            described = 1
        } else {
            describeSpecial($0)
        }
    }
    if ($0 ~ /\/\/\/</) {
        comment = $0
        sub(/.*\/\/\/</, substr($0, 1, indentOf($0)) "///", comment)
        comment = comment "\n"
        commentIndent = indentOf($0)
        commentName = declaredName($0)
    } else if (described) {
        commentName = declaredName($0)
    }
    described = 0
    print
    line = $0
    sub(/ *\/\/.*/, "", line)
    opens = gsub(/\{/, "{", line)
    closes = gsub(/\}/, "}", line)
    depth += opens - closes
    if (opens > closes && line ~ /^ *(class|struct|enum|namespace|extern)/ ) {
        outer = depth
        comment = ""
    } else if (depth < outer) {
        outer = depth
    }
    previousEnds = line ~ /[;{}]$/ || line ~ /^ *template/ || line == ""
}
