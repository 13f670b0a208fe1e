#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "barcode_label.h"

namespace barcode::test {

// A label as a host has it; freed with its scope.
class MadeLabel {
 public:
  explicit MadeLabel(std::string_view request)
      : m_label(barcode_label_make(request.data(), request.size())) {}
  explicit MadeLabel(const nlohmann::json& request) : MadeLabel(std::string_view(request.dump())) {}
  ~MadeLabel() { barcode_label_free(m_label); }
  MadeLabel(const MadeLabel&) = delete;
  MadeLabel& operator=(const MadeLabel&) = delete;

  const BarcodeLabel* Get() const { return m_label; }
  bool Ok() const { return barcode_label_ok(m_label) == 1; }

  std::string_view Data() const {
    std::size_t length = 0;
    const unsigned char* const bytes = barcode_label_data(m_label, &length);
    return {reinterpret_cast<const char*>(bytes), length};
  }
  std::string_view MediaType() const { return barcode_label_media_type(m_label); }
  std::string_view ReportText() const { return barcode_label_report(m_label); }
  nlohmann::json Report() const { return nlohmann::json::parse(ReportText()); }

  // "delivered", or what it was refused for: "bad_value of module".
  std::string Outcome() const {
    const nlohmann::json report = Report();
    if (report["ok"]) {
      return "delivered";
    }
    return report["error"]["code"].get<std::string>() + " of " + report["error"]["field"].get<std::string>();
  }

 private:
  BarcodeLabel* m_label;
};

}  // namespace barcode::test
