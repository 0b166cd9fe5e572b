# Shows Doxygen the headers' plain comments as documentation; the headers stay free of its markup.
#
#   - A block of // comments right above a declaration documents it; the block that begins a file documents the
#     file. A block with a blank line below it is a heading between declarations and documents nothing.
#   - A // comment behind a declaration documents it, too.
#   - A comment above adjacent constants or overloads documents each of them.
#   - Left out unless they have a comment of their own: message handlers (afx_msg), overrides, which do what
#     their base class says, destructors, and defaulted or deleted functions.
#   - Comments in function bodies are nobody's documentation.
#
# Every line of output stands where its line of input stood, so that warnings name the right place.

# A comment's text with nothing in it that Doxygen takes for markup. It takes none in a quotation.
function plain(text,    i, n, piece, result) {
    n = split(text, piece, "\"")
    for (i = 1; i <= n; ++i) {
        if (i % 2 == 1 || i == n)
            gsub(/[\\@<>#%&]/, "\\\\&", piece[i])
        result = result (i > 1 ? "\"" : "") piece[i]
    }
    return result
}

function comment_text(line) {
    sub(/^[ \t]*\/\//, "", line)
    return line
}

# Tables and examples are indented by two blanks or more; their lines stay apart.
function is_indented(i) { return i < held && comment_text(block[i]) ~ /^   +[^ ]/ }

# Prints the comment block as documentation, or as the comment that it is.
function flush_block(is_documentation,    i) {
    for (i = 0; i < held; ++i)
        print is_documentation ? "///" plain(comment_text(block[i])) \
                                     (is_indented(i) || is_indented(i + 1) ? " \\n" : "") \
                               : block[i]
    held = 0
}

# The block's text on one line.
function block_text(    i, text) {
    for (i = 0; i < held; ++i)
        text = text comment_text(block[i])
    return plain(text)
}

# The name of the function that a declaration declares, "" for anything else.
function function_name(text) {
    if (text !~ /^[^=]*[A-Za-z_0-9]+\(/ || text ~ /^[ \t]*(using|inline constexpr|static constexpr)/)
        return ""
    sub(/\(.*/, "", text)
    sub(/.*[^A-Za-z_0-9~]/, "", text)
    return text
}

# Whether a line opens a scope of declarations, not a function's body.
function opens_scope(text) {
    return text ~ /^[ \t]*(typedef )?(class|struct|enum|union|namespace|extern "C")[ \t{]/ ||
           text == "{" && scope_ahead
}

function count(text, char) { return gsub(char, "", text) }

# Follows the braces of a line without its comment.
function follow(text,    opening, closing) {
    opening = count(text, "[{]")
    closing = count(text, "[}]")
    if (body > 0 || opening > closing && !opens_scope(text))
        body += opening - closing
    scope_ahead = opening == 0 && text !~ /;/ && (scope_ahead || opens_scope(text))
}

function is_left_out() {
    return declaration ~ /^[ \t]*afx_msg / || declaration ~ /[ \t)]override( = default)?(;| \{.*\}$)/ ||
           declaration ~ /^[ \t]*(virtual )?~/ || declaration ~ /= (default|delete);$/
}

# Parts a line into code and the remark behind it.
function split_remark(line) {
    code = line
    remark = ""
    if (line !~ /^[ \t]*\/\// && match(line, /[ \t]+\/\/ /)) {
        code = substr(line, 1, RSTART - 1)
        remark = substr(line, RSTART + RLENGTH)
    }
}

function is_constant() { return declaration ~ /^[ \t]*(static|inline) constexpr|^using/ }

# What documents a declaration that has no comment above it: the comment of its kin there.
function shared_comment(name) {
    if (name != "" && name == last_name)
        return " ///< \\overload"
    return is_constant() && constants_text != "" ? " ///<" constants_text : ""
}

# Whether the declaration that is being collected ends with a line, which may open a scope or be the last
# enumerator.
function ends_declaration(text) {
    if (text ~ /[;,{}][ \t]*$/)
        return count(declaration, "[(]") == count(declaration, "[)]")
    return text !~ /;/ && text ~ /^[ \t]*((template|class|struct|enum|namespace).*|[A-Za-z_0-9]+ = .*)$/
}

# Prints the declaration that has been collected, with what documents it.
function end_declaration(    i, name, hidden, behind) {
    name = function_name(declaration)
    if (held > 0)
        constants_text = is_constant() ? block_text() : ""
    else if (!remarked && is_left_out())
        hidden = 1
    else
        behind = shared_comment(name)
    flush_block(1)
    for (i = 0; i < lines; ++i)
        print hidden ? "" : part[i] (i == lines - 1 ? behind : "")
    last_name = name
    lines = 0
    declaration = ""
    remarked = 0
}

{ sub(/\r$/, "") }

body > 0 {
    split_remark($0)
    follow(code)
    print
    next
}

/^[ \t]*\/\// && lines == 0 {
    block[held++] = $0
    next
}

/^#pragma once/ && !seen_file {
    seen_file = 1
    flush_block(1)
    print "/// \\file"
    next
}

/^[ \t]*$/ && lines == 0 {
    flush_block(0)
    last_name = ""
    constants_text = ""
    print
    next
}

# What is no declaration.
lines == 0 && /^(#|[ \t]*((public|protected|private):|DECLARE_[A-Z_]+\(|[{}]|friend ))/ {
    flush_block(/^#define/)
    split_remark($0)
    follow(code)
    print
    next
}

{
    split_remark($0)
    part[lines++] = remark != "" ? code " ///< " plain(remark) : $0
    remarked = remarked || remark != ""
    declaration = declaration code
    sub(/[ \t]+$/, "", declaration)
    follow(code)
    if (ends_declaration(code))
        end_declaration()
}

END {
    if (lines > 0)
        end_declaration()
    flush_block(0)
}
