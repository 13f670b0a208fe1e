#include <unistd.h>

#include <cerrno>

#include "base/base64.h"
#include "label/json_writer.h"
#include "label/text_writer.h"
#include "mkbarcode/batch/output.h"
#include "mkbarcode/descriptor.h"

namespace barcode::tool {
namespace {

constexpr std::string_view kSvg = "image/svg+xml";

class JsonLinesPacker : public Packer {
 public:
  void Pack(const FinishedRow& row, Parcel& parcel) override {
    AppendPieces(parcel.bytes, R"({"n":)", row.number, R"(,"ok":true,"media_type":")", row.label.mediaType);
    AppendData(row.label, parcel.bytes);
    AppendPieces(parcel.bytes, R"(,"report":)", row.label.report, "}\n");
  }

  void PackRefused(const FinishedRow& row, Parcel& parcel) override {
    AppendPieces(parcel.bytes, R"({"n":)", row.number, R"(,"ok":false,"report":)", row.label.report, "}\n");
  }

 private:
  void AppendData(const label::Label& label, std::string& line) {
    if (label.mediaType == kSvg) {
      m_quoted.Shorten(0);
      label::AddJsonString(m_quoted, label.data);
      AppendPieces(line, R"(","svg":)", m_quoted.Written());
      return;
    }
    line += R"(","data":")";
    AppendBase64(line, {reinterpret_cast<const std::uint8_t*>(label.data.data()), label.data.size()});
    line += '"';
  }

  label::TextWriter m_quoted{0};
};

class JsonLines : public Output {
 public:
  explicit JsonLines(int descriptor) : m_descriptor(descriptor) {}

  std::unique_ptr<Packer> NewPacker() override { return std::make_unique<JsonLinesPacker>(); }

  void Write(Parcel& parcel) override {
    if (!WriteDescriptor(m_descriptor, parcel.bytes)) {
      FailWithErrno("cannot write to standard output");
    }
  }

 private:
  int m_descriptor;
};

}  // namespace

std::unique_ptr<Output> JsonLinesOutput(int descriptor) {
  return std::make_unique<JsonLines>(descriptor);
}

}  // namespace barcode::tool
