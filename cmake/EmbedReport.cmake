# Makes a C++ file of the style sheet and the scripts of a report.
#   cmake -DSTYLE=FILE -DSCRIPTS=FILE,FILE... -DOUT=FILE -P EmbedReport.cmake
# The scripts are modules of one page, which has no other files to import from. So they become one module: imports from
# each other go, and "export" does. Their order does not matter, but that what runs at once comes last.

# A compiler need not take a literal of more than 64 KB, so a text comes in pieces.
function(literal_pieces text out)
    set(pieces "")
    string(LENGTH "${text}" length)
    set(begin 0)
    while(begin LESS length)
        string(SUBSTRING "${text}" ${begin} 8000 piece)
        string(APPEND pieces "    text += R\"report(${piece})report\";\n")
        math(EXPR begin "${begin} + 8000")
    endwhile()
    set(${out} "${pieces}" PARENT_SCOPE)
endfunction()

file(READ "${STYLE}" style)
set(script "")
string(REPLACE "," ";" files "${SCRIPTS}")
foreach(file IN LISTS files)
    file(READ "${file}" text)
    string(REGEX REPLACE "(^|\n)import [^\n]*" "\\1" text "${text}")
    string(REGEX REPLACE "(^|\n)export " "\\1" text "${text}")
    string(APPEND script "${text}\n")
endforeach()
literal_pieces("${style}" style)
literal_pieces("${script}" script)
file(WRITE "${OUT}.new"
     "#include \"report/reportassets.h\"\n\nnamespace dotweave {\n\n"
     "std::string ReportAsset_Style()\n{\n    std::string text;\n${style}    return text;\n}\n\n"
     "std::string ReportAsset_Script()\n{\n    std::string text;\n${script}    return text;\n}\n\n"
     "} // namespace dotweave\n")
file(COPY_FILE "${OUT}.new" "${OUT}" ONLY_IF_DIFFERENT)
