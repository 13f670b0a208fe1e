// Requests to the label library. An input that begins with a control character says which fields a request
// has and what they hold, by the list of types that the library gives; any other input is a request as it is.
// Whatever it is, there is a label, its report is JSON, and a picture is there, whole, exactly when it says
// so.
#include <array>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "barcode_label.h"
#include "base/base64.h"
#include "fuzz/byte_reader.h"
#include "fuzz/require.h"

namespace barcode::fuzz {
namespace {

using nlohmann::json;

const json& Types() {
  static const json types = json::parse(barcode_label_types());
  return types;
}

constexpr std::array<std::string_view, 8> kAlphabets = {"0123456789",
                                                        "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%",
                                                        "ABCDabcd0123456789-$:/.+",
                                                        "abcdefghijklmnopqrstuvwxyz\"<>&\\\n\x01\x7F",
                                                        "()0123456789\x1D",
                                                        "01",
                                                        "A",
                                                        "\xE3\x81\x82\xC3\xA9\xF0\x9F\x98\x80"};
constexpr std::array<std::string_view, 14> kPieces = {"(01)04912345678904",
                                                      "(10)",
                                                      "(17)261231",
                                                      "(3103)000123",
                                                      "(21)",
                                                      "{FNC1}",
                                                      "{AI}",
                                                      "(91)",
                                                      "490123456789",
                                                      "1234567",
                                                      "01234567890",
                                                      "2001234567890",
                                                      "(8020)1(415)",
                                                      "\xE6\xBC\xA2"};

class RequestMaker {
 public:
  explicit RequestMaker(ByteReader& reader) : m_reader(reader) {}

  std::string Make() {
    const json& type = Types()[m_reader.Below(Types().size())];
    json request = {{"type", type["name"]}};
    const std::string text = Text();
    if (m_reader.OneIn(4)) {
      request["text_base64"] =
          Base64Encode({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    } else {
      request["text"] = text;
    }
    for (std::size_t count = m_reader.Below(8); count > 0; --count) {
      const json& from = m_reader.OneIn(32) ? Types()[m_reader.Below(Types().size())] : type;
      const json& options = from["options"];
      const json& option = options[m_reader.Below(options.size())];
      request[option["name"].get<std::string>()] = Value(option);
    }
    return request.dump(-1, ' ', m_reader.Flag(), json::error_handler_t::replace);
  }

 private:
  std::string Text() {
    switch (m_reader.Below(4)) {
      case 0:
        return m_reader.Bytes(64);
      case 1: {
        std::string text;
        for (std::size_t count = m_reader.Below(6); count > 0; --count) {
          text += m_reader.Flag() ? std::string(m_reader.Of(kPieces))
                                  : InAlphabet(m_reader.Bytes(8), m_reader.Of(kAlphabets));
        }
        return text;
      }
      case 2:
        return std::string(std::size_t{m_reader.Byte()} * m_reader.Below(16), m_reader.Of(kAlphabets)[0]);
      default:
        return InAlphabet(m_reader.Bytes(48), m_reader.Of(kAlphabets));
    }
  }

  json Value(const json& option) {
    if (m_reader.OneIn(32)) {
      return m_reader.Any<double>();
    }
    const std::string kind = option["kind"];
    if (kind == "boolean") {
      return m_reader.Flag();
    }
    if (kind == "string") {
      return Text();
    }
    if (option.contains("values") && (!option.contains("min") || m_reader.OneIn(4))) {
      const json& values = option["values"];
      if (kind != "color" || m_reader.OneIn(4)) {
        return values[m_reader.Below(values.size())];
      }
    }
    if (kind == "color") {
      constexpr std::string_view kHexadecimal = "0123456789abcdef";
      std::string colour = "#";
      for (std::size_t count = m_reader.OneIn(4) ? 8 : 6; count > 0; --count) {
        colour += kHexadecimal[m_reader.Below(kHexadecimal.size())];
      }
      return colour;
    }
    return Number(option["min"], option["max"], kind == "number");
  }

  // Mostly small ones: large pictures take long.
  json Number(double low, double high, bool isReal) {
    const std::size_t choice = m_reader.Below(16);
    if (choice == 0) {
      return isReal ? json(low) : json(static_cast<int>(low));
    }
    if (choice == 1 && high <= 1000) {
      return isReal ? json(high) : json(static_cast<int>(high));
    }
    const int offset = m_reader.Byte();
    return isReal ? json(low + offset / 16.0) : json(static_cast<int>(low) + offset);
  }

  ByteReader& m_reader;
};

int BigEndian(std::string_view bytes) {
  int number = 0;
  for (const char byte : bytes.substr(0, 4)) {
    number = number << 8U | static_cast<unsigned char>(byte);
  }
  return number;
}

void RequireWhole(const std::string& mediaType, std::string_view data, const json& report) {
  if (mediaType == "image/png") {
    Require(data.starts_with("\x89PNG\r\n\x1a\n") && data.ends_with("IEND\xAE\x42\x60\x82"),
            "a PNG file is whole");
    Require(BigEndian(data.substr(16)) == report["width"] && BigEndian(data.substr(20)) == report["height"],
            "a PNG file has the size that is reported");
  } else if (mediaType == "image/svg+xml") {
    Require(data.starts_with('<') && data.find("</svg>") != std::string_view::npos, "a document is whole");
  } else {
    Require(mediaType == "application/pdf" && data.starts_with("%PDF-") &&
                data.find("%%EOF") != std::string_view::npos,
            "a PDF file is whole");
  }
}

void Try(std::string_view request) {
  BarcodeLabel* const label = barcode_label_make(request.data(), request.size());
  Require(label != nullptr, "there is a label for every request");
  const std::string text = barcode_label_report(label);
  const json report = json::parse(text, nullptr, false);
  Require(report.is_object(), "a report is JSON");
  std::size_t length = 0;
  const unsigned char* const bytes = barcode_label_data(label, &length);
  const std::string mediaType = barcode_label_media_type(label);
  const bool ok = barcode_label_ok(label) == 1;
  Require(report["ok"] == ok, "the report and the result agree");
  Require((bytes != nullptr) == ok && (length > 0) == ok && mediaType.empty() != ok,
          "a picture is there when the label was delivered");
  Require(report.contains("error") != ok, "a refusal has its error");
  if (ok) {
    Require(report["bytes"] == length, "the size of the picture is reported");
    RequireWhole(mediaType, {reinterpret_cast<const char*>(bytes), length}, report);
  } else {
    Require(!report["error"]["message"].get_ref<const std::string&>().empty(), "an error has its message");
    Require(report["error"]["code"] != "out_of_memory", "there is memory enough");
  }
  barcode_label_free(label);
}

}  // namespace
}  // namespace barcode::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  constexpr char kFirstOfText = ' ';
  if (input.empty() || static_cast<unsigned char>(input.front()) >= kFirstOfText) {
    barcode::fuzz::Try(input);
    return 0;
  }
  barcode::fuzz::ByteReader reader({data, size});
  reader.Byte();
  const std::string request = barcode::fuzz::RequestMaker(reader).Make();
  barcode::fuzz::Try(request);
  return 0;
}
