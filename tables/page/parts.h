// parts.h - the files of the page, put into the program when it is built.
#ifndef PAGE_PARTS_H
#define PAGE_PARTS_H

#include <string_view>

namespace tables::parts {

extern std::string_view const html; // with {{names}} of what is filled in
extern std::string_view const script;
extern std::string_view const style;
extern std::string_view const scriptSum; // SHA-256 in hexadecimal digits
extern std::string_view const styleSum;

} // namespace tables::parts

#endif
