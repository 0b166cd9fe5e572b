# Sums up what gcov says about the objects of a library; used by the script beside it. Its lines are
#       count:number:text
# where the count is "-" for a line without code, and begins with "#" or "=" for one that was not run.

function uncovered_of(file,    lines, first, last, i) {
    for (i = 1; i <= longest[file] + 1; ++i) {
        if ((file, i) in hit && !hit[file, i]) {
            if (!first)
                first = i
            last = i
        } else if (first && ((file, i) in hit || i > longest[file])) {
            lines = lines (lines ? ", " : "") (first == last ? first : first "-" last)
            first = 0
        }
    }
    return lines
}

{
    count = $0
    sub(/:.*/, "", count)
    gsub(/ /, "", count)
    rest = substr($0, index($0, ":") + 1)
    number = rest + 0
    sub(/^[^:]*:/, "", rest)
}

count == "-" && number == 0 && sub(/^Source:/, "", rest) {
    file = rest
    taken = index(file, prefix) == 1
}

taken && number > 0 && count ~ /^([0-9]+\*?|#####|=====)$/ {
    if (!((file, number) in hit)) {
        hit[file, number] = 0
        ++lines[file]
        if (number > longest[file])
            longest[file] = number
    }
    if (!hit[file, number] && count ~ /^[0-9]/ && count + 0 > 0) {
        hit[file, number] = 1
        ++run[file]
    }
}

END {
    for (file in lines) {
        all_lines += lines[file]
        all_run += run[file]
        printf "%5.1f%% %5d of %5d  %s", 100 * run[file] / lines[file], run[file], lines[file], file | "sort -k 5"
        text = uncovered_of(file)
        printf "%s\n", (text ? ": " text : "") | "sort -k 5"
    }
    close("sort -k 5")
    if (all_lines == 0) {
        print "nothing was counted"
        exit 1
    }
    printf "%5.1f%% %5d of %5d  lines\n", 100 * all_run / all_lines, all_run, all_lines
}
