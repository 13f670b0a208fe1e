#include "label_proof/content.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>
#include <vector>

#include "label_proof/gs1_content.h"
#include "support/mixed_text.h"

namespace barcode::test {
namespace {

constexpr auto kEvery = std::to_array<SymbologyInfo>({
    {Symbology::kCode39, "code39", "c39,3of9,Code 39,CODE-39", Family::kLinear},
    {Symbology::kCode93, "code93", "c93,Code 93,CODE_93", Family::kLinear},
    {Symbology::kCode128, "code128", "c128,Code 128", Family::kLinear},
    {Symbology::kGs1_128, "gs1-128", "ean128,ucc128,gs1_128,GS1-128", Family::kLinear},
    {Symbology::kNw7, "nw7", "codabar,NW-7", Family::kLinear},
    {Symbology::kMatrix2of5, "matrix2of5", "m2of5,Matrix 2 of 5", Family::kLinear},
    {Symbology::kNec2of5, "nec2of5", "nec25,NEC 2of5", Family::kLinear},
    {Symbology::kJan8, "jan8", "ean8,gtin8,JAN-8", Family::kRetail},
    {Symbology::kJan13, "jan13", "ean13,jan,ean,gtin13,JAN 13", Family::kRetail},
    {Symbology::kUpcA, "upca", "upc,gtin12,UPC-A", Family::kRetail},
    {Symbology::kUpcE, "upce", "UPC-E", Family::kRetail},
    {Symbology::kItf, "itf", "i2of5,interleaved2of5,itf14,ITF", Family::kLinear},
    {Symbology::kDataBar14, "databar",
     "databar14,gs1databar,gs1databar14,databaromnidirectional,rss14,GS1 DataBar", Family::kLinear},
    {Symbology::kDataBarLimited, "databar-limited", "gs1databarlimited,rsslimited,DataBar Limited",
     Family::kLinear},
    {Symbology::kDataBarExpanded, "databar-expanded", "gs1databarexpanded,rssexpanded,DataBar_Expanded",
     Family::kLinear},
    {Symbology::kYubinCustomer, "yubin", "yubincustomer,jppost,japanpost,customer,kasutama",
     Family::kFourState},
    {Symbology::kQr, "qr", "qrcode,QR Code", Family::kMatrix},
    {Symbology::kDataMatrix, "datamatrix", "dm,ecc200,Data Matrix", Family::kMatrix},
    {Symbology::kPdf417, "pdf417", "PDF 417", Family::kMatrix},
});

constexpr bool NumbersAreIndices() {
  for (std::size_t i = 0; i < kEvery.size(); ++i) {
    if (kEvery[i].symbology != static_cast<Symbology>(i)) {
      return false;
    }
  }
  return true;
}
static_assert(NumbersAreIndices());

template <std::size_t N>
std::string OneOf(RandomText& random, const std::array<std::string_view, N>& words) {
  return std::string(words[static_cast<std::size_t>(random.Number(0, static_cast<int>(N) - 1))]);
}

bool Chance(RandomText& random, int percent) {
  return random.Number(1, 100) <= percent;
}

// Lengths of texts: mostly those of everyday labels, the shortest and the long ones now and then.
int Length(RandomText& random, int shortest, int usual, int longest) {
  if (Chance(random, 8)) {
    return shortest;
  }
  return random.Number(shortest, Chance(random, 12) ? longest : usual);
}

std::string Upper(std::string text) {
  for (char& character : text) {
    character = character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
  }
  return text;
}

// The words of options may be written in upper and in lower case.
std::string AnyCase(RandomText& random, std::string word) {
  if (Chance(random, 30)) {
    for (char& character : word) {
      character = character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    }
  }
  return word;
}

int SizeOf(const std::string& text) {
  return static_cast<int>(text.size());
}

Content Code39(RandomText& random) {
  constexpr std::string_view kCharacters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";
  constexpr std::string_view kLower = "abcdefghijklmnopqrstuvwxyz0123456789-. $/+%";
  const int length = Length(random, 1, 14, 45);
  Content content;
  content.text = random.Of(Chance(random, 20) ? kLower : kCharacters, length, length);
  content.data = Upper(content.text);
  content.roughColumns = 16 * length + 31;
  return content;
}

// Characters of Code 93's own set, and pairs of a shift character and a letter as they are typed, which
// readers report as one character of full ASCII.
Content Code93(RandomText& random) {
  constexpr std::string_view kCharacters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";
  constexpr std::string_view kLower = "abcdefghijklmnopqrstuvwxyz0123456789-. $/+%";
  const int length = Length(random, 1, 20, 60);
  const bool lower = Chance(random, 20);
  const bool shifts = Chance(random, 25);
  Content content;
  for (int i = 0; i < length; ++i) {
    const auto letter = static_cast<char>(random.Number('A', 'Z'));
    switch (shifts ? random.Number(0, 7) : 7) {
      case 0:
        content.text += {'!', letter};
        content.data += static_cast<char>(letter - 'A' + 'a');
        break;
      case 1:
        content.text += {'<', letter};
        content.data += static_cast<char>(letter - 'A' + 1);
        break;
      case 2: {
        constexpr std::string_view kFromA = "!\"#$%&'()*+,-./";
        const int place = random.Number(0, static_cast<int>(kFromA.size()) - 1);
        content.text += {'?', static_cast<char>('A' + place)};
        content.data += kFromA[static_cast<std::size_t>(place)];
        break;
      }
      case 3: {
        constexpr std::string_view kFromA = "\x1B\x1C\x1D\x1E\x1F;<=>?[\\]^_{|}~\x7F";
        const int place = random.Number(0, static_cast<int>(kFromA.size()) - 1);
        content.text += {'>', static_cast<char>('A' + place)};
        content.data += kFromA[static_cast<std::size_t>(place)];
        break;
      }
      default: {
        const std::string character = random.Of(lower ? kLower : kCharacters, 1, 1);
        content.text += character;
        content.data += Upper(character);
        break;
      }
    }
  }
  content.roughColumns = 9 * (SizeOf(content.text) + 4) + 1;
  return content;
}

std::string Code128Text(RandomText& random) {
  constexpr std::array<int, 12> kLengths = {1, 1, 1, 2, 2, 3, 4, 5, 6, 7, 10, 15};
  std::string text;
  for (int pieces = random.Number(1, 5); pieces > 0; --pieces) {
    const int length = kLengths[static_cast<std::size_t>(random.Number(0, std::size(kLengths) - 1))];
    switch (random.Number(0, 4)) {
      case 0:
      case 1:
        text += random.Digits(length, length);
        break;
      case 2:
        text += random.Bytes(length, length, 0, 31);
        break;
      case 3:
        text += random.Bytes(length, length, '`', 127);
        break;
      default:
        text += random.Bytes(length, length, 0, 127);
        break;
    }
  }
  return text;
}

Content Code128(RandomText& random) {
  Content content;
  switch (random.Number(0, 6)) {
    case 0:
      content.text = random.Bytes(1, 25, 0, 95);
      content.options["code_mode"] = AnyCase(random, "A");
      break;
    case 1:
      content.text = random.Bytes(1, 25, 32, 127);
      content.options["code_mode"] = AnyCase(random, "B");
      break;
    case 2:
      content.text = random.Digits(2, 40);
      content.text.resize(content.text.size() / 2 * 2);
      content.options["code_mode"] = AnyCase(random, "C");
      break;
    case 3:
      content.text = Code128Text(random);
      content.options["code_mode"] = AnyCase(random, "AUTO");
      break;
    default:
      content.text = Code128Text(random);
      break;
  }
  content.data = content.text;
  content.roughColumns = 12 * SizeOf(content.text) + 46;
  return content;
}

Content Gs1_128(RandomText& random) {
  Content content;
  if (Chance(random, 15)) {
    const std::string digits = "91" + random.Digits(41, 41);
    content.data = digits + Gs1CheckDigit(digits);
    content.text = (Chance(random, 20) ? "{FNC1}" : "") + (Chance(random, 50) ? digits : content.data);
    content.options["form"] = "payment";
    content.roughColumns = 290;
    return content;
  }
  const Gs1Content gs1 = RandomGs1(random, 46);
  content.text = gs1.typed;
  content.data = gs1.data;
  content.elements = gs1.elements;
  content.shown = gs1.elements;
  content.roughColumns = 11 * SizeOf(gs1.data) + 60;
  return content;
}

Content Nw7(RandomText& random) {
  Content content;
  const int length = Length(random, 1, 14, 40);
  const std::string inner = random.Of("0123456789-$:/.+", length, length);
  if (Chance(random, 50)) {
    const std::string start = random.Of("ABCDabcd", 1, 1);
    const std::string stop = random.Of("ABCDabcd", 1, 1);
    content.text = start;
    content.text += inner + stop;
    content.data = Upper(content.text);
  } else {
    content.text = inner;
    content.data = "C" + inner + "C";
  }
  content.roughColumns = 16 * length + 40;
  return content;
}

Content Digits(RandomText& random, int modulesEach) {
  const int length = Length(random, 1, 14, 40);
  Content content;
  content.text = random.Digits(length, length);
  content.data = content.text;
  content.roughColumns = modulesEach * length + 30;
  return content;
}

// The check digit is typed or left to the library.
Content Retail(RandomText& random, int length, int columns) {
  const std::string digits = random.Digits(length - 1, length - 1);
  Content content;
  content.data = digits + Gs1CheckDigit(digits);
  content.text = Chance(random, 50) ? digits : content.data;
  content.shown = content.data;
  content.columns = columns;
  content.roughColumns = columns + 20;
  return content;
}

Content UpcE(RandomText& random) {
  const std::string system = random.Of("01", 1, 1);
  const std::string digits = random.Digits(6, 6);
  const std::string full = UpcAOfUpcE(system + digits + "0");
  Content content;
  content.data = system + digits + full.back();
  content.shown = content.data;
  const int given = random.Number(system == "0" ? 6 : 7, 8);
  content.text = given == 6 ? digits : content.data.substr(0, static_cast<std::size_t>(given));
  content.columns = 51;
  content.roughColumns = 70;
  return content;
}

Content Itf(RandomText& random) {
  Content content = Digits(random, 9);
  if (content.text.size() % 2 == 1) {
    content.data = "0" + content.text;
  }
  return content;
}

// A GTIN, with leading zeros left out, with its check digit or as an element string. fewest: digits that the
// symbology takes.
Content Gtin14(RandomText& random, const std::string& firstDigits, int fewest) {
  std::string digits = random.Of(firstDigits, 1, 1) + random.Digits(12, 12);
  const int zeros = Chance(random, 15) ? random.Number(0, 13 - fewest) : 0;
  digits.replace(0, static_cast<std::size_t>(zeros), static_cast<std::size_t>(zeros), '0');
  const std::string gtin = digits + Gs1CheckDigit(digits);
  Content content;
  content.data = "01" + gtin;
  content.elements = "(01)" + gtin;
  content.shown = content.elements;
  if (Chance(random, 50)) {
    content.text = digits.substr(static_cast<std::size_t>(zeros));
  } else {
    content.text = Chance(random, 30) ? content.elements : gtin;
  }
  content.roughColumns = 100;
  return content;
}

Content DataBar14(RandomText& random) {
  constexpr std::array<std::string_view, 3> kForms = {"omnidirectional", "stacked",
                                                      "stacked-omnidirectional"};
  Content content = Gtin14(random, "0123456789", 1);
  if (Chance(random, 75)) {
    content.options["form"] = OneOf(random, kForms);
  }
  return content;
}

Content DataBarExpanded(RandomText& random) {
  Content content;
  // 252 bits hold 31 characters of eight bits; digits take less.
  const Gs1Content gs1 = RandomGs1(random, 29);
  content.text = gs1.typed;
  content.data = gs1.data;
  content.elements = gs1.elements;
  content.shown = gs1.elements;
  content.roughColumns = 14 * SizeOf(gs1.data) + 100;
  if (Chance(random, 50)) {
    content.options["form"] = "stacked";
    if (Chance(random, 60)) {
      content.options["pairs_per_row"] = random.Number(1, 10);
    }
    content.roughColumns = 250;
  } else if (Chance(random, 50)) {
    content.options["form"] = "row";
  }
  return content;
}

// Up to twenty positions, a letter taking two of them.
Content Yubin(RandomText& random) {
  Content content;
  int left = 20;
  content.text = random.Digits(7, 7);
  left -= 7;
  int wanted = random.Number(0, left);
  while (wanted > 0) {
    const bool isLetter = wanted > 1 && Chance(random, 15);
    content.text += isLetter ? random.Of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", 1, 1)
                             : random.Of("0123456789-", 1, 1);
    wanted -= isLetter ? 2 : 1;
  }
  content.data = Upper(content.text);
  content.roughColumns = 142;
  return content;
}

// Characters with their bytes in Shift-JIS (JIS X 0208 and X 0201), some with a second byte that is ASCII.
struct JapaneseCharacter {
  std::string_view utf8;
  std::string_view shiftJis;
};
constexpr auto kJapanese = std::to_array<JapaneseCharacter>({
    {"\xE3\x81\x82", "\x82\xA0"},
    {"\xE6\xBC\xA2", "\x8A\xBF"},
    {"\xE6\x97\xA5", "\x93\xFA"},
    {"\xE6\x9C\xAC", "\x96\x7B"},
    {"\xE8\xA1\xA8", "\x95\x5C"},
    {"\xE3\x82\xBD", "\x83\x5C"},
    {"\xEF\xBD\xB1", "\xB1"},
    {"A", "A"},
    {"7", "7"},
});

void UseShiftJis(RandomText& random, Content& content, int characters) {
  content.text.clear();
  content.data.clear();
  for (int i = 0; i < characters; ++i) {
    const auto& character = kJapanese[static_cast<std::size_t>(random.Number(0, std::size(kJapanese) - 1))];
    content.text += character.utf8;
    content.data += character.shiftJis;
  }
  constexpr std::array<std::string_view, 3> kWords = {"shift-jis", "Shift-JIS", "shift_jis"};
  content.options["string_encoding"] = OneOf(random, kWords);
}

// A text of at most so many bytes, of the kinds that matrix codes are given.
void UseBytes(RandomText& random, Content& content, int mostBytes) {
  const int length = Length(random, 1, std::min(mostBytes, 60), mostBytes);
  switch (random.Number(0, 5)) {
    case 0:
      content.text = random.Digits(length, length);
      break;
    case 1:
      content.text = random.Of("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ $%*+-./:", length, length);
      break;
    case 2:
      content.text = random.Bytes(length, length, ' ', '~');
      break;
    case 3:
      content.text = random.Bytes(length, length, 0, 255);
      content.asBytes = true;
      break;
    case 4:
      for (content.text = ""; SizeOf(content.text) + 3 <= length;) {
        content.text += Chance(random, 60) ? Utf8Character(random) : random.Bytes(1, 3, ' ', '~');
      }
      content.text += content.text.empty() ? "x" : "";
      break;
    default:
      UseShiftJis(random, content, std::max(1, length / 2));
      return;
  }
  content.data = content.text;
  // A byte that no UTF-8 has: nothing is there to be converted.
  if (content.asBytes) {
    content.text.back() = '\xFF';
    content.data = content.text;
    if (Chance(random, 50)) {
      content.options["string_encoding"] = "shift-jis";
    }
  } else if (Chance(random, 15)) {
    content.options["string_encoding"] = Chance(random, 50) ? "utf-8" : "UTF-8";
  }
}

// Bytes that a version holds at level H.
constexpr std::array<int, 40> kQrBytes = {
    7,   14,  24,  34,  44,  58,  64,  84,  98,  119, 137, 155, 177, 194, 220, 250,  280,  310,  338,  382,
    403, 439, 461, 511, 535, 593, 625, 658, 698, 742, 790, 842, 898, 958, 983, 1051, 1093, 1139, 1219, 1273};

Content Qr(RandomText& random) {
  constexpr std::array<std::string_view, 4> kLevels = {"L", "M", "Q", "H"};
  Content content;
  // Large symbols are slow to read and no different.
  const int version = random.Number(1, Chance(random, 6) ? 40 : 12);
  const int mostBytes = kQrBytes[static_cast<std::size_t>(version - 1)];
  UseBytes(random, content, mostBytes);
  if (Chance(random, 40)) {
    content.options["qr_version"] = version;
    content.columns = 4 * version + 17;
    content.rows = content.columns;
  }
  if (Chance(random, 60)) {
    content.options["error_correction_level"] = AnyCase(random, OneOf(random, kLevels));
  }
  const bool isDigits = std::ranges::all_of(content.data, [](char c) { return c >= '0' && c <= '9'; });
  if (isDigits && Chance(random, 60)) {
    content.options["encode_mode"] = AnyCase(random, "NUMERIC");
  } else if (Chance(random, 20)) {
    content.options["encode_mode"] = AnyCase(random, Chance(random, 50) ? "AUTO" : "BYTE");
  }
  content.roughColumns = 4 * version + 25;
  return content;
}

struct DataMatrixSize {
  int rows;
  int columns;
  int codewords;  // of data
};
constexpr auto kDataMatrixSizes = std::to_array<DataMatrixSize>({
    {10, 10, 3},   {12, 12, 5},   {14, 14, 8},     {16, 16, 12},     {18, 18, 18},     {20, 20, 22},
    {22, 22, 30},  {24, 24, 36},  {26, 26, 44},    {32, 32, 62},     {36, 36, 86},     {40, 40, 114},
    {44, 44, 144}, {48, 48, 174}, {52, 52, 204},   {64, 64, 280},    {72, 72, 368},    {80, 80, 456},
    {88, 88, 576}, {96, 96, 696}, {104, 104, 816}, {120, 120, 1050}, {132, 132, 1304}, {144, 144, 1558},
    {8, 18, 5},    {8, 32, 10},   {12, 26, 16},    {12, 36, 22},     {16, 36, 32},     {16, 48, 49},
});

struct DataMatrixScheme {
  std::string_view word;
  std::string_view alphabet;
};
constexpr auto kDataMatrixSchemes = std::to_array<DataMatrixScheme>({
    {"C40", " 0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"},
    {"TEXT", " 0123456789abcdefghijklmnopqrstuvwxyz"},
    {"X12", "\r*> 0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"},
    {"EDIFACT", " !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^"},
});

Content DataMatrix(RandomText& random) {
  Content content;
  const auto& size =
      kDataMatrixSizes[static_cast<std::size_t>(random.Number(0, std::size(kDataMatrixSizes) - 1))];
  const bool isLarge = size.codewords > 300;
  const bool isFixed = Chance(random, 40) && (!isLarge || Chance(random, 20));
  // Each byte takes two codewords at most, and the ways in and out of a scheme a few.
  UseBytes(random, content, std::max(1, (isFixed ? std::min(size.codewords, 500) : 120) / 2 - 3));
  if (isFixed && SizeOf(content.data) * 2 > size.codewords - 2) {
    content = {};
    content.text = random.Of("ABCDEFGHJK", 1, 1);
    content.data = content.text;
  }
  if (isFixed) {
    content.options["code_size"] =
        AnyCase(random, std::to_string(size.rows) + "x" + std::to_string(size.columns));
    content.rows = size.rows;
    content.columns = size.columns;
  }
  if (Chance(random, 30)) {
    const auto& [word, alphabet] =
        kDataMatrixSchemes[static_cast<std::size_t>(random.Number(0, std::size(kDataMatrixSchemes) - 1))];
    if (!isFixed) {
      content = {};
      content.text = random.Of(alphabet, 1, 60);
      content.data = content.text;
      content.options["encode_scheme"] = AnyCase(random, std::string(word));
    }
  } else if (Chance(random, 30)) {
    constexpr std::array<std::string_view, 3> kAnyBytes = {"ASCII", "BASE256", "AUTO"};
    content.options["encode_scheme"] = AnyCase(random, OneOf(random, kAnyBytes));
  }
  content.roughColumns = isFixed ? size.columns + 2 : 40;
  return content;
}

Content Pdf417(RandomText& random) {
  Content content;
  UseBytes(random, content, Chance(random, 5) ? 600 : 120);
  if (Chance(random, 40)) {
    content.options["aspect_ratio"] = random.Number(2, 30) / 10.0;
  }
  if (Chance(random, 30)) {
    content.options["y_height"] = random.Number(3, 6);
  }
  content.roughColumns = 200;
  return content;
}

}  // namespace

std::span<const SymbologyInfo> EverySymbologyInfo() {
  return kEvery;
}

char Gs1CheckDigit(std::string_view digits) {
  int sum = 0;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    sum += (digits[digits.size() - 1 - i] - '0') * (i % 2 == 0 ? 3 : 1);
  }
  return static_cast<char>('0' + (10 - sum % 10) % 10);
}

std::string UpcAOfUpcE(std::string_view code) {
  const std::string system(code.substr(0, 1));
  const std::string e(code.substr(1, 6));
  std::string digits;
  switch (e[5]) {
    case '0':
    case '1':
    case '2':
      digits = system + e[0] + e[1] + e[5] + "0000" + e[2] + e[3] + e[4];
      break;
    case '3':
      digits = system + e[0] + e[1] + e[2] + "00000" + e[3] + e[4];
      break;
    case '4':
      digits = system + e[0] + e[1] + e[2] + e[3] + "00000" + e[4];
      break;
    default:
      digits = system + e[0] + e[1] + e[2] + e[3] + e[4] + "0000" + e[5];
      break;
  }
  return digits + Gs1CheckDigit(digits);
}

Content RandomContent(Symbology symbology, RandomText& random) {
  switch (symbology) {
    case Symbology::kCode39:
      return Code39(random);
    case Symbology::kCode93:
      return Code93(random);
    case Symbology::kCode128:
      return Code128(random);
    case Symbology::kGs1_128:
      return Gs1_128(random);
    case Symbology::kNw7:
      return Nw7(random);
    case Symbology::kMatrix2of5:
    case Symbology::kNec2of5:
      return Digits(random, 10);
    case Symbology::kJan8:
      return Retail(random, 8, 67);
    case Symbology::kJan13:
      return Retail(random, 13, 95);
    case Symbology::kUpcA:
      return Retail(random, 12, 95);
    case Symbology::kUpcE:
      return UpcE(random);
    case Symbology::kItf:
      return Itf(random);
    case Symbology::kDataBar14:
      return DataBar14(random);
    case Symbology::kDataBarLimited:
      return Gtin14(random, "01", 8);
    case Symbology::kDataBarExpanded:
      return DataBarExpanded(random);
    case Symbology::kYubinCustomer:
      return Yubin(random);
    case Symbology::kQr:
      return Qr(random);
    case Symbology::kDataMatrix:
      return DataMatrix(random);
    case Symbology::kPdf417:
      return Pdf417(random);
  }
  return {};
}

}  // namespace barcode::test
