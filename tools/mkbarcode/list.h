#ifndef BARCODE_TOOLS_MKBARCODE_LIST_H
#define BARCODE_TOOLS_MKBARCODE_LIST_H

#include <string>

namespace barcode::tool {

/* What --list prints: a line for each type that this build of the library offers. */
std::string ListText();

/* What --version prints. */
std::string VersionText();

}  // namespace barcode::tool

#endif
