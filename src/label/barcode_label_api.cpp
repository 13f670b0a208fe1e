#include <memory>
#include <string_view>

#include "barcode_label.h"
#include "label/fields.h"
#include "label/label.h"
#include "label/report.h"

// What the pointer of a host points to.
struct BarcodeLabel {
  barcode::label::Label label;
  // The report, in the label or constant.
  const char* report = barcode::label::kOutOfMemoryReport;
};

BarcodeLabel* barcode_label_make(const char* request, size_t length) {
  std::unique_ptr<BarcodeLabel> made;
  try {
    made = std::make_unique<BarcodeLabel>();
    const std::string_view json = request == nullptr ? std::string_view() : std::string_view(request, length);
    made->label = barcode::label::MakeFromJson(json);
    made->report = made->label.report.c_str();
  } catch (...) {
    // Memory is exhausted: the object, if there is one, says so.
  }
  return made.release();
}

int barcode_label_ok(const BarcodeLabel* label) {
  return label != nullptr && label->label.ok ? 1 : 0;
}

const unsigned char* barcode_label_data(const BarcodeLabel* label, size_t* length) {
  const bool delivered = barcode_label_ok(label) == 1;
  if (length != nullptr) {
    *length = delivered ? label->label.data.size() : 0;
  }
  return delivered ? reinterpret_cast<const unsigned char*>(label->label.data.data()) : nullptr;
}

const char* barcode_label_media_type(const BarcodeLabel* label) {
  return label == nullptr ? "" : label->label.mediaType.c_str();
}

const char* barcode_label_report(const BarcodeLabel* label) {
  return label == nullptr ? "" : label->report;
}

void barcode_label_free(BarcodeLabel* label) {
  const std::unique_ptr<BarcodeLabel> owner(label);
}

const char* barcode_label_types() {
  try {
    return barcode::label::TypesJson().c_str();
  } catch (...) {
    return "[]";  // memory is exhausted; the next call tries again
  }
}

const char* barcode_label_version() {
  return BARCODE_LABEL_VERSION_STRING;
}
