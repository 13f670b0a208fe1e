#pragma once

#include <string>
#include <string_view>

#include "label_proof/content.h"
#include "label_proof/made_label.h"

namespace barcode::test {

// How a label is drawn: everything of a request but type, text and the symbology's options.
struct Look {
  Json fields = Json::object();
  int module = 0;      // dots; 0: as the library chooses
  bool isBox = false;  // the picture is to be given a width and a height
  int extraWidth = 0;  // hundredths by which the box is larger than the smallest picture
  int extraHeight = 0;
};

Look RandomLook(const SymbologyInfo& info, const Content& content, RandomText& random);

// The request of a text and a look, in its fields' usual order.
Json RequestOf(std::string_view type, const Content& content, const Look& look);

// A name of the type: its own, or an alias in any spelling.
std::string RandomName(const SymbologyInfo& info, RandomText& random);

std::string Base64(std::string_view bytes);

}  // namespace barcode::test
