#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "barcode_label.h"

namespace barcode::test {

// A text that the type encodes.
inline std::string TextFor(const std::string& type) {
  static const std::vector<std::pair<std::string, std::string>> texts = {
      {"code39", "ABC-123"},
      {"code93", "ABC-123"},
      {"code128", "abcABC1234"},
      {"gs1-128", "(01)04912345678904(17)261231(10)LOT42"},
      {"nw7", "A12345B"},
      {"matrix2of5", "12345"},
      {"nec2of5", "12345"},
      {"jan8", "4901234"},
      {"jan13", "490123456789"},
      {"upca", "01234567890"},
      {"upce", "123456"},
      {"itf", "123456"},
      {"databar", "2001234567890"},
      {"databar-limited", "0012345678901"},
      {"databar-expanded", "(01)04912345678904(10)LOT42"},
      {"yubin", "1234567"},
      {"qr", "HELLO"},
      {"datamatrix", "HELLO"},
      {"pdf417", "HELLO"},
  };
  for (const auto& [name, text] : texts) {
    if (name == type) {
      return text;
    }
  }
  return "";
}

// A request for each type and each of its forms.
inline std::vector<nlohmann::json> ValidRequests() {
  std::vector<nlohmann::json> requests;
  for (const nlohmann::json& type : nlohmann::json::parse(barcode_label_types())) {
    const std::string name = type["name"];
    requests.push_back({{"type", name}, {"text", TextFor(name)}});
    for (const nlohmann::json& option : type["options"]) {
      if (option["name"] != "form") {
        continue;
      }
      for (const nlohmann::json& form : option["values"]) {
        requests.push_back(requests.back());
        requests.back()["form"] = form;
        if (form == "payment") {
          requests.back()["text"] = "(91)91234500000000000000000000000000000000000";
        }
      }
    }
  }
  return requests;
}

inline constexpr const char* kFormats[] = {"png", "svg", "pdf"};

}  // namespace barcode::test
