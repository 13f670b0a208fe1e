#include "mkbarcode/gallery/picture.h"

#include <png.h>

#include <iterator>
#include <string>

#include "mkbarcode/errors.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

constexpr std::size_t kPixelBytes = 4;

}  // namespace

Picture DecodePng(std::string_view bytes) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) == 0) {
    throw RunError(Concat({"not a PNG file: ", std::string(std::begin(image.message))}));
  }
  image.format = PNG_FORMAT_RGBA;
  Picture picture{.width = image.width, .height = image.height};
  picture.pixels.resize(picture.width * picture.height * kPixelBytes);
  if (png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr) == 0) {
    throw RunError(Concat({"a broken PNG file: ", std::string(std::begin(image.message))}));
  }
  return picture;
}

Picture Cropped(const Picture& picture, const PictureArea& area) {
  Picture part{.width = area.width, .height = area.height};
  part.pixels.reserve(area.width * area.height * kPixelBytes);
  for (std::size_t row = area.top; row < area.top + area.height; ++row) {
    const auto first =
        picture.pixels.begin() + static_cast<std::ptrdiff_t>((row * picture.width + area.left) * kPixelBytes);
    part.pixels.insert(part.pixels.end(), first,
                       first + static_cast<std::ptrdiff_t>(area.width * kPixelBytes));
  }
  return part;
}

}  // namespace barcode::tool
