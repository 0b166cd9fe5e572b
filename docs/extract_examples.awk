# Collects the C++ examples of the documents in one source file.
#
#   awk -f extract_examples.awk README.md docs/buttons.md ... > examples.cpp
#
# Blocks fenced with ```cpp are taken, each document's in a namespace of its own. What the examples use and a
# reader can imagine (resource identifiers, a class of the host) stands before them in a comment of the document
# that begins with the line "<!-- the examples use" and ends with the line "-->".

FNR == 1 {
    taken = 0
    page = FILENAME
    sub(/.*\//, "", page)
    sub(/\.md$/, "", page)
    gsub(/[^A-Za-z0-9]/, "_", page)
}

!taken && (/^```cpp$/ || /^<!-- the examples use$/) {
    taken = 1
    closing = /^`/ ? "```" : "-->"
    body = body "namespace example_" page "\n{\n#line " FNR + 1 " \"" FILENAME "\"\n"
    next
}

taken && $0 == closing {
    taken = 0
    body = body "}\n"
    next
}

taken && /^#include/ {
    includes = includes $0 "\n"
    body = body "\n"
    next
}

taken { body = body $0 "\n" }

END { printf "#include <vgui/vgui.h>\n%s%s", includes, body }
