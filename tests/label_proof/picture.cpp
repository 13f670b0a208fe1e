#include "label_proof/picture.h"

#include <cairo.h>
#include <librsvg/rsvg.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <span>
#include <sstream>
#include <stdexcept>

#include "support/scratch_folder.h"

namespace barcode::test {
namespace {

std::uint8_t Luminance(int red, int green, int blue) {
  return static_cast<std::uint8_t>((red * 306 + green * 601 + blue * 117) >> 10);
}

int OnWhite(int channel, int alpha) {
  return (channel * alpha + 255 * (255 - alpha) + 127) / 255;
}

std::size_t PixelsOf(int width, int height) {
  return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;
using Document = std::unique_ptr<RsvgHandle, decltype(&g_object_unref)>;

// What stands between two marks of a text.
std::string_view Between(std::string_view text, std::string_view before, std::string_view after) {
  const std::size_t start = text.find(before);
  if (start == std::string_view::npos) {
    return {};
  }
  text.remove_prefix(start + before.size());
  return text.substr(0, text.find(after));
}

// The outermost element with its view enlarged by a margin of user units.
std::string WithMargin(const std::string& svg, int width, int height, int margin) {
  const std::size_t start = svg.find("<svg");
  const std::size_t end = svg.find('>', start);
  if (start == std::string::npos || end == std::string::npos) {
    return {};
  }
  const std::string view = std::to_string(-margin) + " " + std::to_string(-margin) + " " +
                           std::to_string(width + 2 * margin) + " " + std::to_string(height + 2 * margin);
  return "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"" +
         std::to_string(width + 2 * margin) + "\" height=\"" + std::to_string(height + 2 * margin) +
         "\" viewBox=\"" + view + "\">" + svg.substr(end + 1);
}

// A PGM file ("P5"), as pdftoppm writes it.
GreyImage ReadPgm(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::string magic;
  int most = 0;
  GreyImage image{0, 0, {}};
  if (!(in >> magic >> image.width >> image.height >> most) || magic != "P5" || most != 255) {
    return {0, 0, {}};
  }
  in.get();
  image.pixels.resize(PixelsOf(image.width, image.height));
  in.read(reinterpret_cast<char*>(image.pixels.data()), static_cast<std::streamsize>(image.pixels.size()));
  return in ? image : GreyImage{0, 0, {}};
}

}  // namespace

GreyImage GreyOfPng(std::string_view png) {
  const Image image = DecodePng({reinterpret_cast<const std::uint8_t*>(png.data()), png.size()});
  GreyImage grey{image.width, image.height, {}};
  grey.pixels.reserve(image.pixels.size());
  for (const Pixel& pixel : image.pixels) {
    grey.pixels.push_back(
        Luminance(OnWhite(pixel.r, pixel.a), OnWhite(pixel.g, pixel.a), OnWhite(pixel.b, pixel.a)));
  }
  return grey;
}

GreyImage GreyOfSvg(const std::string& svg, int width, int height, int margin) {
  const std::string document = margin == 0 ? svg : WithMargin(svg, width, height, margin);
  const int pixelWidth = width + 2 * margin;
  const int pixelHeight = height + 2 * margin;
  const Document handle(
      rsvg_handle_new_from_data(reinterpret_cast<const guint8*>(document.data()), document.size(), nullptr),
      &g_object_unref);
  if (!handle) {
    return {0, 0, {}};
  }
  const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, pixelWidth, pixelHeight),
                        &cairo_surface_destroy);
  const Context context(cairo_create(surface.get()), &cairo_destroy);
  cairo_set_source_rgb(context.get(), 1, 1, 1);
  cairo_paint(context.get());
  const RsvgRectangle viewport{0, 0, static_cast<double>(pixelWidth), static_cast<double>(pixelHeight)};
  if (rsvg_handle_render_document(handle.get(), context.get(), &viewport, nullptr) == 0) {
    return {0, 0, {}};
  }
  cairo_surface_flush(surface.get());
  const int stride = cairo_image_surface_get_stride(surface.get());
  const std::span<const unsigned char> bytes(cairo_image_surface_get_data(surface.get()),
                                             PixelsOf(stride, pixelHeight));
  GreyImage grey{pixelWidth, pixelHeight, {}};
  grey.pixels.reserve(PixelsOf(pixelWidth, pixelHeight));
  for (int y = 0; y < pixelHeight; ++y) {
    for (int x = 0; x < pixelWidth; ++x) {
      const auto pixel = bytes.subspan(PixelsOf(stride, y) + 4 * static_cast<std::size_t>(x), 4);
      grey.pixels.push_back(Luminance(pixel[2], pixel[1], pixel[0]));
    }
  }
  return grey;
}

std::vector<GreyImage> GreyOfPdfs(const std::vector<PdfPage>& pages) {
  if (pages.empty()) {
    return {};
  }
  const ScratchFolder folder;
  std::ofstream script(folder.File("render.sh"));
  for (std::size_t i = 0; i < pages.size(); ++i) {
    const std::string file = folder.File("page" + std::to_string(i));
    std::ofstream(file, std::ios::binary) << pages[i].pdf;
    script << "'" << TEST_PDFTOPPM << "' -q -gray -singlefile -scale-to-x " << pages[i].width
           << " -scale-to-y " << pages[i].height << " '" << file << "' '" << file << "'\n";
  }
  script.close();
  const std::string command = "sh '" + folder.File("render.sh") + "'";
  (void)std::system(command.c_str());  // NOLINT(cert-env33-c): paths of this build, nothing from outside
  std::vector<GreyImage> images;
  for (std::size_t i = 0; i < pages.size(); ++i) {
    images.push_back(ReadPgm(folder.File("page" + std::to_string(i) + ".pgm")));
  }
  return images;
}

std::vector<GreyImage> GreyOfPages(const std::string& pdf, int dpi) {
  const ScratchFolder folder;
  const std::string file = folder.File("pages.pdf");
  std::ofstream(file, std::ios::binary) << pdf;
  const std::string command = "'" TEST_PDFTOPPM "' -q -gray -r " + std::to_string(dpi) + " '" + file + "' '" +
                              folder.File("page") + "'";
  (void)std::system(command.c_str());  // NOLINT(cert-env33-c): paths of this build, nothing from outside
  // Named by their numbers, with as many digits as the last one has.
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(file).parent_path())) {
    if (entry.path().extension() == ".pgm") {
      files.push_back(entry.path().string());
    }
  }
  std::ranges::sort(files);
  std::vector<GreyImage> images;
  images.reserve(files.size());
  for (const std::string& page : files) {
    images.push_back(ReadPgm(page));
  }
  return images;
}

std::string PdfInfo(const std::string& pdf) {
  const ScratchFolder folder;
  const std::string file = folder.File("file.pdf");
  const std::string info = folder.File("info");
  std::ofstream(file, std::ios::binary) << pdf;
  const std::string command =
      "'" TEST_PDFINFO "' -f 1 -l 3 '" + file + "' >'" + info + "' 2>'" + folder.File("complaints") + "'";
  (void)std::system(command.c_str());  // NOLINT(cert-env33-c): paths of this build, nothing from outside
  std::ostringstream complaints;
  complaints << std::ifstream(folder.File("complaints")).rdbuf();
  std::ifstream in(info);
  std::string result;
  for (std::string line; complaints.str().empty() && std::getline(in, line);) {
    if (line.starts_with("Page") && line.find("rot:") == std::string::npos) {
      // One space is enough.
      line.erase(std::unique(line.begin(), line.end(), [](char a, char b) { return a == ' ' && b == ' '; }),
                 line.end());
      result += line + '\n';
    }
  }
  return result;
}

Millimetres PageOfPdf(std::string_view pdf) {
  std::istringstream box{std::string(Between(pdf, "/MediaBox", "]"))};
  char bracket = 0;
  double left = 0;
  double bottom = 0;
  double right = 0;
  double top = 0;
  if (!(box >> bracket >> left >> bottom >> right >> top)) {
    return {};
  }
  constexpr double kMillimetresPerPoint = 25.4 / 72;
  return {(right - left) * kMillimetresPerPoint, (top - bottom) * kMillimetresPerPoint};
}

GreyImage Enlarged(const GreyImage& image, int scale) {
  GreyImage large{image.width * scale, image.height * scale, {}};
  large.pixels.reserve(PixelsOf(large.width, large.height));
  for (int y = 0; y < large.height; ++y) {
    const std::size_t row = PixelsOf(image.width, y / scale);
    for (int x = 0; x < large.width; ++x) {
      large.pixels.push_back(image.pixels[row + static_cast<std::size_t>(x / scale)]);
    }
  }
  return large;
}

GreyImage Turned(const GreyImage& image, int quarters) {
  if (quarters % 4 == 0) {
    return image;
  }
  GreyImage turned{image.height, image.width, std::vector<std::uint8_t>(image.pixels.size())};
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x) {
      turned.pixels[PixelsOf(turned.width, x) + static_cast<std::size_t>(image.height - 1 - y)] =
          image.pixels[PixelsOf(image.width, y) + static_cast<std::size_t>(x)];
    }
  }
  return Turned(turned, quarters % 4 - 1);
}

DarkPixels::DarkPixels(const GreyImage& image) : m_width(image.width), m_height(image.height) {
  if (image.pixels.empty()) {
    return;
  }
  const auto [darkest, lightest] = std::ranges::minmax_element(image.pixels);
  const int threshold = (*darkest + *lightest + 1) / 2;
  m_dark.reserve(image.pixels.size());
  for (const std::uint8_t pixel : image.pixels) {
    m_dark.push_back(pixel < threshold);
  }
}

std::vector<int> DarkPixels::Runs(int y) const {
  std::vector<int> runs(1);
  bool dark = false;
  for (int x = 0; x < m_width; ++x) {
    if (At(x, y) != dark) {
      runs.push_back(0);
      dark = !dark;
    }
    ++runs.back();
  }
  return runs;
}

bool DarkPixels::SameRows(int y, int otherY) const {
  for (int x = 0; x < m_width; ++x) {
    if (At(x, y) != At(x, otherY)) {
      return false;
    }
  }
  return true;
}

bool DarkPixels::AnyIn(int left, int top, int right, int bottom) const {
  for (int y = std::max(top, 0); y < std::min(bottom, m_height); ++y) {
    for (int x = std::max(left, 0); x < std::min(right, m_width); ++x) {
      if (At(x, y)) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace barcode::test
