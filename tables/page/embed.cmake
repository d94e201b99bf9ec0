# embed.cmake - writes the files of the pages as C++ texts: cmake -DPAGE=.. -DCHARTS=.. -DOUT=.. -P
file(READ ${CHARTS}/uPlot.iife.min.js charts)
file(READ ${CHARTS}/LICENSE licence)
file(READ ${PAGE}/common.js common)
file(READ ${PAGE}/head.html head)
file(READ ${CHARTS}/uPlot.min.css chartStyle)
file(READ ${PAGE}/report.css style)
string(PREPEND style "${chartStyle}\n")
string(SHA256 styleSum "${style}")
# Longer than what every compiler must take, and than clang takes without a word.
set(text "#pragma GCC diagnostic ignored \"-Woverlength-strings\"\n")
string(APPEND text "#include \"page/parts.h\"\nnamespace tables::parts {\n")
string(APPEND text "constexpr std::string_view style = R\"psPage(${style})psPage\";\n")
foreach(page report history)
    file(READ ${PAGE}/${page}.html html)
    file(READ ${PAGE}/${page}.js script)
    string(PREPEND script "/*\n${licence}*/\n${charts}\n${common}\n")
    string(SHA256 scriptSum "${script}")
    string(APPEND text "PageParts const ${page}{.html = R\"psPage(${head}${html})psPage\",\n"
        ".script = R\"psPage(${script})psPage\",\n.style = style,\n"
        ".scriptSum = \"${scriptSum}\",\n.styleSum = \"${styleSum}\"};\n")
endforeach()
file(WRITE ${OUT} "${text}} // namespace tables::parts\n")
