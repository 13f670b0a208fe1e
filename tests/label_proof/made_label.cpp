#include "label_proof/made_label.h"

#include <cstddef>
#include <memory>
#include <new>

#include "barcode_label.h"

namespace barcode::test {

MadeLabel MakeLabel(const std::string& request) {
  const std::unique_ptr<BarcodeLabel, decltype(&barcode_label_free)> label(
      barcode_label_make(request.data(), request.size()), &barcode_label_free);
  if (!label) {
    throw std::bad_alloc();
  }
  MadeLabel made;
  made.ok = barcode_label_ok(label.get()) != 0;
  std::size_t length = 0;
  const unsigned char* data = barcode_label_data(label.get(), &length);
  if (data != nullptr) {
    made.data.assign(data, data + length);
  }
  made.mediaType = barcode_label_media_type(label.get());
  made.report = Json::parse(barcode_label_report(label.get()), nullptr, false);
  return made;
}

}  // namespace barcode::test
