#include "datamatrix/codeword_decoder.h"

#include <array>
#include <stdexcept>
#include <string_view>

namespace barcode::datamatrix {
namespace {

[[noreturn]] void Refuse(const char* reason) {
  throw std::runtime_error(reason);
}

class Decoder {
 public:
  explicit Decoder(std::span<const std::uint8_t> codewords) : m_codewords(codewords) {}

  std::string Run() {
    while (Left() > 0) {
      Ascii(Next());
    }
    if (m_upper) {
      Refuse("upper shift at the end");
    }
    return m_out;
  }

 private:
  std::size_t Left() const { return m_codewords.size() - m_next; }
  int Next() { return m_codewords[m_next++]; }

  void Emit(int character) {
    m_out.push_back(static_cast<char>(character + (m_upper ? 128 : 0)));
    m_upper = false;
  }

  void Ascii(int codeword) {
    if (codeword >= 1 && codeword <= 128) {
      Emit(codeword - 1);
    } else if (codeword >= 130 && codeword <= 229 && !m_upper) {
      Emit('0' + (codeword - 130) / 10);
      Emit('0' + (codeword - 130) % 10);
    } else if (codeword == 235 && !m_upper) {
      m_upper = true;
    } else if (m_upper) {
      Refuse("upper shift before no character");
    } else if (codeword == 129) {
      Pads();
    } else if (codeword == 230 || codeword == 239) {
      Triplets(codeword == 239);
    } else if (codeword == 238) {
      X12();
    } else if (codeword == 240) {
      Edifact();
    } else if (codeword == 231) {
      Base256();
    } else {
      Refuse("codeword without a meaning in ASCII");
    }
  }

  void Pads() {
    while (Left() > 0) {
      const int position = static_cast<int>(m_next) + 1;
      const int expected = 129 + 149 * position % 253 + 1;
      if (Next() != (expected > 254 ? expected - 254 : expected)) {
        Refuse("pad not randomised as it should be");
      }
    }
  }

  // The next triplet; false at an unlatch, and with one codeword left, which is ASCII.
  bool NextTriplet(std::array<int, 3>& values) {
    if (Left() < 2) {
      return false;
    }
    const int first = Next();
    if (first == 254) {
      return false;
    }
    const int packed = first * 256 + Next() - 1;
    values = {packed / 1600, packed / 40 % 40, packed % 40};
    if (packed < 0 || values[0] > 39) {
      Refuse("triplet out of range");
    }
    return true;
  }

  void Triplets(bool text) {
    constexpr std::string_view kC40Basic =
        "   "
        " 0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    constexpr std::string_view kTextBasic =
        "   "
        " 0123456789abcdefghijklmnopqrstuvwxyz";
    constexpr std::string_view kSet2 = "!\"#$%&'()*+,-./:;<=>?@[\\]^_";
    constexpr std::string_view kC40Set3 = "`abcdefghijklmnopqrstuvwxyz{|}~\x7F";
    constexpr std::string_view kTextSet3 = "`ABCDEFGHIJKLMNOPQRSTUVWXYZ{|}~\x7F";
    int set = 0;
    std::array<int, 3> values{};
    while (NextTriplet(values)) {
      for (const int value : values) {
        const auto index = static_cast<std::size_t>(value);
        const int current = set;
        set = 0;
        if (current == 0 && value < 3) {
          set = value + 1;
        } else if (current == 0) {
          Emit((text ? kTextBasic : kC40Basic)[index]);
        } else if (current == 1 && value < 32) {
          Emit(value);
        } else if (current == 2 && index < kSet2.size()) {
          Emit(kSet2[index]);
        } else if (current == 2 && value == 30 && !m_upper) {
          m_upper = true;
        } else if (current == 3 && index < kC40Set3.size()) {
          Emit((text ? kTextSet3 : kC40Set3)[index]);
        } else {
          Refuse("value without a meaning in its set");
        }
      }
    }
    if (m_upper || set > 1) {
      Refuse("shift before no character");
    }
  }

  void X12() {
    std::array<int, 3> values{};
    while (NextTriplet(values)) {
      for (const int value : values) {
        Emit("\r*> 0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"[value]);
      }
    }
  }

  void Edifact() {
    while (Left() > 2) {
      std::uint32_t bits = 0;
      int available = 0;
      for (int i = 0; i < 4; ++i) {
        while (available < 6) {
          bits = bits << 8U | static_cast<std::uint32_t>(Next());
          available += 8;
        }
        available -= 6;
        const std::uint32_t value = bits >> available & 0x3FU;
        bits &= (1U << available) - 1U;
        if (value == 31) {
          if (bits != 0) {
            Refuse("bits behind an unlatch");
          }
          return;
        }
        Emit(static_cast<int>(value < 32 ? value + 64 : value));
      }
    }
  }

  int NextUnrandomized() {
    if (Left() == 0) {
      Refuse("field beyond the end");
    }
    const int codeword = Next();
    const int random = 149 * static_cast<int>(m_next) % 255 + 1;
    return (codeword - random + 256) % 256;
  }

  void Base256() {
    const int first = NextUnrandomized();
    std::size_t length = Left();
    if (first >= 250) {
      const int more = NextUnrandomized();
      length = static_cast<std::size_t>(first - 249) * 250 + static_cast<std::size_t>(more);
    } else if (first > 0) {
      length = static_cast<std::size_t>(first);
    }
    for (std::size_t i = 0; i < length; ++i) {
      m_out.push_back(static_cast<char>(NextUnrandomized()));
    }
  }

  std::span<const std::uint8_t> m_codewords;
  std::size_t m_next = 0;
  bool m_upper = false;
  std::string m_out;
};

}  // namespace

std::string DecodeCodewords(std::span<const std::uint8_t> codewords) {
  return Decoder(codewords).Run();
}

}  // namespace barcode::datamatrix
