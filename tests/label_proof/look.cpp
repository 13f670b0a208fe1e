#include "label_proof/look.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace barcode::test {
namespace {

bool Chance(RandomText& random, int percent) {
  return random.Number(1, 100) <= percent;
}

std::string Hex(int value) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  return {kDigits[static_cast<std::size_t>(value / 16)], kDigits[static_cast<std::size_t>(value % 16)]};
}

std::string Colour(RandomText& random, int darkest, int lightest) {
  std::string colour = "#";
  for (int channel = 0; channel < 3; ++channel) {
    colour += Hex(random.Number(darkest, lightest));
  }
  return colour;
}

// Dark on light, by far enough for a scanner's red light too.
void AddColours(Json& fields, RandomText& random) {
  if (Chance(random, 30)) {
    fields["foreground"] = Chance(random, 20) ? "#013" : Colour(random, 0, 70);
  }
  if (Chance(random, 15)) {
    fields["background"] = "transparent";
  } else if (Chance(random, 25)) {
    fields["background"] = Colour(random, 200, 255) + (Chance(random, 20) ? "c0" : "");
  }
}

void AddCaption(Json& fields, RandomText& random) {
  constexpr std::array<std::string_view, 5> kCaptions = {"Lot 42 <\"A&B\">", "caf\xC3\xA9 1234567890", "x",
                                                         "]]> & '", "\xE6\xBC\xA2\xE5\xAD\x97 0123"};
  if (Chance(random, 5)) {
    fields["caption"] = random.Bytes(1, 20, 1, 127);
    return;
  }
  if (Chance(random, 50)) {
    fields["caption"] = kCaptions[static_cast<std::size_t>(random.Number(0, kCaptions.size() - 1))];
    return;
  }
  fields["caption"] = random.Bytes(1, Chance(random, 20) ? 80 : 20, ' ', '~');
}

void AddText(const SymbologyInfo& info, Json& fields, RandomText& random) {
  const bool hasLine = info.family == Family::kLinear || info.family == Family::kRetail;
  if (Chance(random, 20)) {
    AddCaption(fields, random);
  }
  if (Chance(random, 15)) {
    fields["text_scale"] = random.Number(1, Chance(random, 20) ? 32 : 12) / 4.0;
  }
  if (Chance(random, 10)) {
    fields["text_gap"] = random.Number(1, Chance(random, 20) ? 32 : 12) / 4.0;
  }
  if (!hasLine) {
    return;
  }
  if (Chance(random, 30)) {
    fields["show_text"] = Chance(random, 20);
  }
  if (Chance(random, 25)) {
    fields["even_spacing"] = Chance(random, 50);
  }
  if (info.family == Family::kRetail && Chance(random, 40)) {
    fields["extended_guard"] = Chance(random, 50);
  }
  const bool isFramed = info.symbology == Symbology::kCode39 || info.symbology == Symbology::kNw7;
  if (isFramed && Chance(random, 40)) {
    fields["show_start_stop"] = Chance(random, 50);
  }
}

bool IsStacked(const Content& content) {
  const auto form = content.options.find("form");
  return form != content.options.end() && form->get<std::string>().starts_with("stacked");
}

void AddHeight(const SymbologyInfo& info, const Content& content, const Look& look, Json& fields,
               RandomText& random) {
  const bool hasHeight = info.family == Family::kLinear || info.family == Family::kRetail;
  if (!hasHeight || IsStacked(content) || Chance(random, 35)) {
    return;
  }
  const int module = std::max(look.module, 2);
  const int height = random.Number(std::max(10, 6 * module), std::max(60, 20 * module));
  if (fields.contains("dpi") && fields["dpi"].get<int>() <= 1200 && Chance(random, 30)) {
    fields["height_mm"] = height * 25.4 / fields["dpi"].get<int>();
    return;
  }
  fields["height"] = height;
}

// Modules of a picture that readers are still fast with.
int LargestModule(const Content& content) {
  constexpr int kDots = 1100;
  return std::clamp(kDots / content.roughColumns, 1, 6);
}

// A page has at least 1/24 inch a side.
int HighestDpi(const Look& look) {
  return look.fields.value("format", "png") == "pdf" ? 240 : 4800;
}

void AddModule(const Content& content, Look& look, RandomText& random) {
  const int largest = LargestModule(content);
  if (Chance(random, 50) || largest == 1) {
    look.module = 1;
  } else if (Chance(random, 15) && largest >= 4) {
    return;
  } else {
    look.module = random.Number(2, largest);
  }
  if (Chance(random, 8)) {
    // Some module in millimetres that is this many dots of the resolution.
    const int dpi = random.Number(150, std::min(1200, HighestDpi(look)));
    look.fields["module_mm"] = (look.module + random.Number(-30, 30) / 100.0) * 25.4 / dpi;
    look.fields["dpi"] = dpi;
    return;
  }
  look.fields["module"] = look.module;
  if (Chance(random, 20)) {
    constexpr std::array<int, 7> kUsual = {50, 96, 203, 300, 600, 1200, 4800};
    const int dpi = kUsual[static_cast<std::size_t>(random.Number(0, kUsual.size() - 1))];
    look.fields["dpi"] = std::min(dpi, HighestDpi(look));
  }
}

void AddQuietZone(Json& fields, RandomText& random) {
  if (Chance(random, 15)) {
    fields["quiet_zone"] = "standard";
  } else if (Chance(random, 20)) {
    // At least what every symbology wants.
    fields["quiet_zone"] = random.Number(11, 16);
  }
}

void AddFormat(Json& fields, RandomText& random) {
  const int share = random.Number(1, 100);
  if (share <= 5) {
    fields["format"] = "svg";
  } else if (share <= 8) {
    fields["format"] = "pdf";
  } else if (share <= 40) {
    fields["format"] = "png";
  }
}

}  // namespace

Look RandomLook(const SymbologyInfo& info, const Content& content, RandomText& random) {
  Look look;
  AddFormat(look.fields, random);
  look.isBox = Chance(random, 10);
  AddModule(content, look, random);
  if (look.isBox) {
    look.extraWidth = random.Number(0, 1) * random.Number(0, 60);
    look.extraHeight = random.Number(0, 1) * random.Number(0, 60);
  } else {
    AddHeight(info, content, look, look.fields, random);
  }
  AddQuietZone(look.fields, random);
  if (Chance(random, 45)) {
    look.fields["rotate"] = 90 * random.Number(0, 3);
  }
  AddColours(look.fields, random);
  AddText(info, look.fields, random);
  if (look.module >= 4 && !look.isBox && Chance(random, 25)) {
    look.fields["bar_adjust"] = random.Number(-1, 1);
  }
  if (Chance(random, 3)) {
    look.fields["strict"] = nullptr;
  }
  return look;
}

Json RequestOf(std::string_view type, const Content& content, const Look& look) {
  Json request;
  request["type"] = type;
  if (content.asBytes) {
    request["text_base64"] = Base64(content.text);
  } else {
    request["text"] = content.text;
  }
  for (const auto& [field, value] : content.options.items()) {
    request[field] = value;
  }
  for (const auto& [field, value] : look.fields.items()) {
    request[field] = value;
  }
  return request;
}

std::string RandomName(const SymbologyInfo& info, RandomText& random) {
  if (Chance(random, 70)) {
    return std::string(info.name);
  }
  std::string name(info.aliases.substr(0, info.aliases.find(',')));
  std::string_view rest = info.aliases;
  for (int skip = random.Number(0, 5); skip > 0 && rest.find(',') != std::string_view::npos; --skip) {
    rest.remove_prefix(rest.find(',') + 1);
    name = rest.substr(0, rest.find(','));
  }
  for (char& character : name) {
    if (Chance(random, 20) && character >= 'a' && character <= 'z') {
      character = static_cast<char>(character - 'a' + 'A');
    }
  }
  return name;
}

std::string Base64(std::string_view bytes) {
  constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    const std::string_view group = bytes.substr(at, 3);
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      bits = bits << 8U | (i < group.size() ? static_cast<unsigned char>(group[i]) : 0U);
    }
    for (std::size_t i = 0; i < 4; ++i) {
      text += i <= group.size() ? kAlphabet[bits >> (18 - 6 * i) & 0x3FU] : '=';
    }
  }
  return text;
}

}  // namespace barcode::test
