# Turns a file into a C++ source: its bytes as a constant array behind a function. The same input gives the same output.
#   cmake -DINPUT=font.ttf -DOUTPUT=font_data.cpp -DFUNCTION=EmbeddedRobotoFont -DHEADER=text/embedded_font.h -P EmbedFile.cmake
file(READ "${INPUT}" bytes HEX)
string(REPEAT "." 32 sixteenBytes)
string(REGEX REPLACE "(${sixteenBytes})" "\\1\n" bytes "${bytes}")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
get_filename_component(name "${INPUT}" NAME)
file(WRITE "${OUTPUT}" "// Generated from ${name}; do not edit.
#include \"${HEADER}\"

namespace barcode {
namespace {

constexpr std::uint8_t kBytes[] = {
${bytes}
};

}  // namespace

std::span<const std::uint8_t> ${FUNCTION}() { return kBytes; }

}  // namespace barcode
")
