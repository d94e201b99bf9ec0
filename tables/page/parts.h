// parts.h - the files of the pages, put into the program when it is built.
#ifndef PAGE_PARTS_H
#define PAGE_PARTS_H

#include <string_view>

namespace tables {

// The files of one page.
struct PageParts {
    std::string_view html; // with {{names}} of what is filled in
    std::string_view script;
    std::string_view style;
    std::string_view scriptSum; // SHA-256 in hexadecimal digits
    std::string_view styleSum;
};

namespace parts {

extern PageParts const report;
extern PageParts const history;

} // namespace parts

} // namespace tables

#endif
