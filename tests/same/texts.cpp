#include "same/texts.h"

#include <algorithm>

#include "same/types.h"
#include "support/mixed_text.h"

namespace barcode::same {
namespace {

using test::RandomText;

constexpr const char* kCode39 = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";
constexpr const char* kCodabarData = "0123456789-$:/.+";
constexpr const char* kIso646 =
    "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz!\"%&'()*+,-./:;<=>?_ ";

// Weights 3 and 1 from the right.
char CheckDigit(const std::string& digits) {
  int sum = 0;
  int weight = 3;
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
    sum += (*digit - '0') * weight;
    weight = 4 - weight;
  }
  return static_cast<char>('0' + (10 - sum % 10) % 10);
}

// Digits, mostly with their check digit, sometimes without or with a wrong one.
std::string Checked(RandomText& random, const std::string& digits) {
  switch (random.Number(0, 6)) {
    case 0:
    case 1:
    case 2:
      return digits;
    case 3:
      return digits + random.Digits(1, 1);
    default:
      return digits + CheckDigit(digits);
  }
}

std::string Gtin(RandomText& random, const std::string& first) {
  const std::string digits =
      first + random.Digits(13 - static_cast<int>(first.size()), 13 - static_cast<int>(first.size()));
  return "01" + digits + (OnceIn(random, 10) ? random.Digits(1, 1)[0] : CheckDigit(digits));
}

std::string Separator(RandomText& random) {
  static constexpr const char* kSeparators[] = {"{FNC1}", "{FNC1}", "{AI}", "{FNC1}{AI}", "\x1D", ""};
  return OneOf(random, kSeparators);
}

std::string Field(RandomText& random) {
  static constexpr const char* kIdentifiers[] = {"10", "21", "91",  "99",   "240",
                                                 "30", "37", "400", "8020", "3922"};
  const std::string identifier = OneOf(random, kIdentifiers);
  switch (random.Number(0, 2)) {
    case 0:
      return identifier + random.Digits(1, 16);
    case 1:
      return identifier + random.Of(kCode39, 1, 12);
    default:
      return identifier + random.Of(kIso646, 1, 9);
  }
}

std::string Date(RandomText& random) {
  return "1" + random.Of("1357", 1, 1) + random.Digits(2, 2) +
         std::to_string(100 + random.Number(0, 13)).substr(1) +
         std::to_string(100 + random.Number(0, 32)).substr(1);
}

std::string Weight(RandomText& random) {
  static constexpr const char* kIdentifiers[] = {"3103", "3202", "3203", "3100", "3109", "3201"};
  static constexpr int kMost[] = {32767, 9999, 22767, 99999, 40000};
  return OneOf(random, kIdentifiers) +
         std::to_string(1'000'000 + random.Number(0, OneOf(random, kMost))).substr(1);
}

// A trade item, the way the compressed encodings of DataBar Expanded like it, or just fields.
std::string ElementString(RandomText& random) {
  static constexpr const char* kStarts[] = {"", "{FNC1}", "{AI}", "{AI}"};
  std::string text = OneOf(random, kStarts);
  switch (random.Number(0, 6)) {
    case 0:
      return text + Gtin(random, "9") + Weight(random);
    case 1:
      return text + Gtin(random, "9") + "{AI}" + Weight(random) + Date(random);
    case 2:
      return text + Gtin(random, "9") + "392" + random.Of("0123", 1, 1) + random.Digits(1, 15) +
             Separator(random) + Field(random);
    case 3:
      return text + Gtin(random, "9") + "393" + random.Of("0123", 1, 1) + random.Digits(3, 18);
    case 4:
      return text + Gtin(random, "");
    case 5:
      return text + Gtin(random, random.Digits(1, 1)) + Separator(random) + Field(random) +
             Separator(random) + Field(random);
    default:
      break;
  }
  text += Field(random);
  for (int more = random.Number(0, 3); more > 0; --more) {
    text += Separator(random) + Field(random);
  }
  return text;
}

std::string Code128Text(RandomText& random) {
  switch (random.Number(0, 5)) {
    case 0:
      return random.Digits(1, 24);
    case 1:
      return random.Bytes(1, 24, 1, 127);
    case 2:
      return random.Bytes(1, 30, ' ', '~');
    case 3:
      return random.Of("0123456789AZaz{}\t\r\n", 1, 30);
    case 4:
      return random.Of("ab", 0, 6) + random.Digits(1, 9) + random.Of("\x01\x02XY", 0, 6) +
             random.Digits(0, 9);
    default:
      return random.Of(kCode39, 1, 30);
  }
}

std::string Codabar(RandomText& random) {
  std::string data = random.Of(kCodabarData, 1, 24);
  static constexpr const char* kLetters = "ABCDABCDabcdTNE*";
  switch (random.Number(0, 3)) {
    case 0:
      return data;
    case 1:
      return random.Of(kLetters, 1, 1) + data + random.Of(kLetters, 0, 1);
    default:
      return random.Of("ABCD", 1, 1) + data + random.Of("ABCD", 1, 1);
  }
}

std::string UpcE(RandomText& random) {
  switch (random.Number(0, 3)) {
    case 0:
      return random.Of("01", 1, 1) + random.Digits(6, 7);
    case 1: {
      // A number of UPC-A that can be shortened.
      static constexpr const char* kZeros[] = {"00000", "10000", "20000", "0000"};
      return Checked(random, "0" + random.Digits(2, 3) + OneOf(random, kZeros) + random.Digits(3, 3));
    }
    default:
      return random.Digits(6, 6);
  }
}

std::string DataBarDigits(RandomText& random, const std::string& first) {
  static constexpr const char* kPrefixes[] = {"", "", "", "", "01", "(01)", "{AI}01", "{FNC1}01"};
  const int more = 13 - static_cast<int>(first.size());
  return OneOf(random, kPrefixes) +
         Checked(random, first + random.Digits(OnceIn(random, 8) ? 0 : more, more));
}

std::string Postal(RandomText& random) {
  static constexpr const char* kAddress = "0123456789---ABCZabz";
  return random.Digits(7, 7) + random.Of(kAddress, 0, 18);
}

std::string MatrixText(RandomText& random, int type) {
  // Most texts are short; the largest symbols are costly.
  static constexpr int kLengths[] = {10, 10, 10, 30, 30, 60, 100, 200, 500};
  const int most = OneOf(random, kLengths);
  switch (random.Number(0, 8)) {
    case 0:
      return random.Digits(1, most);
    case 1:
      return random.Of("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ $%*+-./:", 1, most);
    case 2:
      return random.Bytes(1, most, ' ', '~');
    case 3:
      return random.Bytes(1, most, 1, 255);
    case 4: {
      std::string text;
      for (int length = random.Number(1, std::max(1, most / 3)); length > 0; --length) {
        text += OnceIn(random, 20) ? "\xF0\x9F\x98\x80" : test::Utf8Character(random);
      }
      return text;
    }
    case 5: {
      std::string text;
      for (int length = random.Number(1, std::max(1, most / 2)); length > 0; --length) {
        text += test::ShiftJisCharacter(random);
      }
      return text;
    }
    case 6:
      return random.Of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789*>\r ", 1, most);
    default:
      return test::MixedText(random, type == BARCODE_PDF417 ? 8 : 5, 1);
  }
}

// Lengths on both sides of what a symbol holds, or of what the encoder accepts.
std::string TextAtALimit(RandomText& random, int type) {
  static constexpr int kShort[] = {0, 1, 2, 3};
  static constexpr int kRetail[] = {5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
  static constexpr int kLinear[] = {1, 2, 40, 48, 49, 80, 81, 100, 128, 255, 256};
  static constexpr int kExpanded[] = {70, 71, 72, 73, 74, 75, 76, 77, 78};
  static constexpr int kQr[] = {17, 41, 106, 255, 256, 1000, 2331, 2332, 2953, 2954, 5596, 5597, 7089, 7090};
  static constexpr int kDataMatrix[] = {3,    6,    7,    36,   44,   45,   62,   204,  250,  251,  1304,
                                        1555, 1556, 1557, 2335, 2336, 3116, 3117, 4097, 6145, 8192, 8193};
  static constexpr int kPdf417[] = {43, 44, 45, 100, 900, 1108, 1109, 1850, 1851, 2710, 2711};
  if (OnceIn(random, 4)) {
    const int length = OneOf(random, kShort);
    return random.Of(kIso646, length, length);
  }
  int length = OneOf(random, kLinear);
  if (type >= BARCODE_JAN8 && type <= BARCODE_GS1_DATABAR_LIMITED && type != BARCODE_ITF) {
    length = OneOf(random, kRetail);
  } else if (type == BARCODE_GS1_DATABAR_EXPANDED) {
    length = OneOf(random, kExpanded);
  } else if (type == BARCODE_QR) {
    length = OneOf(random, kQr);
  } else if (type == BARCODE_DATAMATRIX) {
    length = OneOf(random, kDataMatrix);
  } else if (type == BARCODE_PDF417) {
    length = OneOf(random, kPdf417);
  }
  return OnceIn(random, 3) ? random.Bytes(length, length, ' ', '~') : random.Digits(length, length);
}

std::string AnyText(RandomText& random) {
  switch (random.Number(0, 9)) {
    case 0:
      return "";
    case 1:
      return random.Bytes(1, 60, 1, 255);
    case 2:
      return random.Digits(1, 60);
    case 3:
      return random.Of("0123456789ABCXYZ{}FNCAI1-. $/+%abc\r\n\t", 1, 40);
    case 4:
      return random.Of(random.Bytes(1, 1, 1), 0, 90);
    case 5:
      return "{FNC1}" + random.Of("{}FNC1AI09", 0, 12) + "{AI}" + random.Digits(0, 9);
    case 6:
      return ElementString(random);
    case 7:
      return test::MixedText(random, 3, 1);
    case 8:
      return OnceIn(random, 20) ? random.Bytes(1000, 9000, 1) : random.Bytes(60, 300, 1);
    default:
      return random.Of("&<>\"' ", 1, 12) + random.Digits(0, 4);
  }
}

// One small thing of a text is changed.
std::string Spoilt(RandomText& random, std::string text) {
  static constexpr const char* kIntruders[] = {"{FNC1}", "{AI}", "{FNC1", "{AI", "}", "*", "A",    "a", " ",
                                               "-",      "+",    "\x80",  "\n",  "(", ")", "\x1D", "<", "&"};
  const auto at = static_cast<std::size_t>(random.Number(0, static_cast<int>(text.size())));
  switch (random.Number(0, 3)) {
    case 0:
      return text.insert(at, OneOf(random, kIntruders));
    case 1:
      return text.erase(at, 1);
    case 2:
      return text.replace(at, 1, random.Bytes(1, 1, 1));
    default:
      return text.insert(at, random.Digits(1, 2));
  }
}

}  // namespace

std::string ValidText(RandomText& random, int type) {
  switch (type) {
    case BARCODE_CODE39:
      return random.Of(OnceIn(random, 6) ? "abcxyzABC019*" : kCode39, 1, 24);
    case BARCODE_CODE93:
      return OnceIn(random, 3) ? random.Bytes(1, 24, 1, 127) : random.Of(kCode39, 1, 24);
    case BARCODE_CODE128:
      return Code128Text(random);
    case BARCODE_GS1_128:
      return OnceIn(random, 5) ? Code128Text(random) : "{FNC1}" + ElementString(random);
    case BARCODE_NW7:
      return Codabar(random);
    case BARCODE_JAN8:
      return Checked(random, random.Digits(7, 7));
    case BARCODE_JAN13:
      return Checked(random, random.Digits(12, 12));
    case BARCODE_UPC_A:
      return Checked(random, random.Digits(11, 11));
    case BARCODE_UPC_E:
      return UpcE(random);
    case BARCODE_GS1_DATABAR_14:
      return DataBarDigits(random, "");
    case BARCODE_GS1_DATABAR_LIMITED:
      return DataBarDigits(random, random.Of("01", 1, 1));
    case BARCODE_GS1_DATABAR_EXPANDED:
      return ElementString(random);
    case BARCODE_YUBIN_CUSTOMER:
      return Postal(random);
    case BARCODE_QR:
    case BARCODE_DATAMATRIX:
    case BARCODE_PDF417:
      return MatrixText(random, type);
    default:  // the 2 of 5 codes
      return random.Digits(1, 24);
  }
}

std::string TextFor(RandomText& random, int type) {
  switch (random.Number(0, 19)) {
    case 0:
    case 1:
      return AnyText(random);
    case 2:
      return TextAtALimit(random, type);
    case 3:
    case 4:
    case 5:
      return Spoilt(random, ValidText(random, type));
    default:
      return ValidText(random, type);
  }
}

std::string PaymentText(RandomText& random) {
  const std::string digits = "91" + random.Digits(41, 41);
  const std::string prefix = OnceIn(random, 2) ? "{FNC1}" : "";
  switch (random.Number(0, 9)) {
    case 0:
      return prefix + random.Digits(40, 46);
    case 1:
      return Spoilt(random, prefix + digits);
    case 2:
      return TextFor(random, BARCODE_GS1_128);
    default:
      return prefix + Checked(random, digits);
  }
}

std::vector<std::string> OrdinaryTexts(int type) {
  static const std::vector<std::vector<std::string>> kTexts = {
      {"ABC-123", "CODE 39", "0123456789", "*A*", "$/+%."},
      {"ABC-123", "Code 93", "a\tb", "0123456789"},
      {"ABC-abc-1234", "0123456789", "12345", "A\tB", "Hello, World!"},
      {"{FNC1}0104912345678904{FNC1}10ABC", "{FNC1}0104912345678904", "{AI}0104912345678904{AI}10ABC",
       "12345"},
      {"A12345B", "12345", "C1-2$3D", "a1b"},
      {"12345", "0", "9876543210"},
      {"12345", "0", "9876543210"},
      {"4901234", "49012347", "49012340"},
      {"490123456789", "4901234567894", "4901234567890", "0012345678905"},
      {"01234567890", "012345678905", "012345678900"},
      {"123456", "0123456", "01234565", "012000003455"},
      {"123456", "12345", "00012345678905"},
      {"2001234567890", "20012345678909", "0", "0104912345678904"},
      {"0012345678901", "1501234567890", "00123456789012", "(01)00012345678905"},
      {"{AI}0190012345678908", "01900123456789083103001750", "01900123456789083922795{FNC1}10AB",
       "10ABC{FNC1}21xyz", "{AI}0190012345678908{AI}3103012233{AI}15991231",
       "{AI}8020ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"},
      {"26300233-30-8-403", "1234567", "0640804", "1540023-1-3-2-B503"},
      {"HELLO", "https://www.example.com/", "0123456789", "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E",
       "\x93\xFA\x96\x7B",
       "The quick brown fox jumps over the lazy dog, again and again and again and again."},
      {"HELLO", "https://www.example.com/", "0123456789", "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E",
       "\x93\xFA\x96\x7B",
       "The quick brown fox jumps over the lazy dog, again and again and again and again."},
      {"HELLO", "https://www.example.com/", "01234567890123456789", "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E",
       "\x93\xFA\x96\x7B",
       "The quick brown fox jumps over the lazy dog, again and again and again and again."}};
  return kTexts.at(static_cast<std::size_t>(type));  // a type without texts is an error
}

}  // namespace barcode::same
