#include "same/session.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <stdexcept>

#include "same/options.h"
#include "same/quoted.h"
#include "same/texts.h"
#include "same/types.h"

namespace barcode::same {
namespace {

using test::RandomText;

constexpr int kMin = std::numeric_limits<int>::min();
constexpr int kMax = std::numeric_limits<int>::max();
constexpr const char* kMixed = "mixed";
constexpr const char* kNone = "none";

struct Box {
  int width;
  int height;
};

Box OrdinaryBox(RandomText& random, int type) {
  static constexpr int kHeights[] = {48, 49, 50, 51, 199, 200, 201};
  if (OnceIn(random, 200)) {
    return {2000, 1000};
  }
  if (IsMatrix(type)) {
    const int side = random.Number(20, 350);
    return {side, OnceIn(random, 2) ? side : random.Number(20, 350)};
  }
  return {random.Number(20, 600), OnceIn(random, 5) ? OneOf(random, kHeights) : random.Number(10, 300)};
}

// Tiny, empty, negative, or far beyond what a canvas can be.
Box StrangeBox(RandomText& random) {
  static constexpr int kSmall[] = {-1, 0, 1, 2, 5, 9, 17, 33, 64, 201};
  static constexpr int kHuge[] = {kMin, -100000, -1, 100000, kMax};
  if (OnceIn(random, 4)) {
    return {OneOf(random, kHuge), OneOf(random, kHuge)};
  }
  return {OneOf(random, kSmall), OneOf(random, kSmall)};
}

// One object and what a host knows about it.
class Object {
 public:
  Object(Host& host, RandomText& random, int type, bool wild)
      : m_host(host),
        m_random(random),
        m_options(host, random, type, wild),
        m_type(type),
        m_wild(wild),
        m_handle(host.Create(type)) {}

  void Destroy() { m_host.Destroy(m_handle); }

  // Options, a draw and fetches; any of them may be missing.
  void Step(bool first) {
    if (first && OnceIn(m_random, 8)) {
      FetchAnything();
    }
    for (int count = m_random.Number(0, first ? 6 : 3); count > 0; --count) {
      m_options.SetSomething(m_handle);
    }
    if (OnceIn(m_random, 3)) {
      m_options.SetFormat(m_handle);
    }
    Draw();
    if (!OnceIn(m_random, 12)) {
      FetchDrawn();
    }
    if (OnceIn(m_random, 3)) {
      FetchAnything();
    }
  }

  // Strings and bytes stay valid until the next call of their kind.
  void LookAgain() {
    if (m_host.LastText() != nullptr) {
      m_host.Again("text again", m_host.LastText());
    }
    m_host.Again("bytes again", m_host.LastImage());
    m_host.ForgetLast();
  }

 private:
  const Library& Functions() const { return m_host.Functions(); }

  void Draw() {
    const bool anything = m_wild && OnceIn(m_random, 10);
    const int way = m_random.Number(0, 19);
    const Box box = m_wild && OnceIn(m_random, 4) ? StrangeBox(m_random) : OrdinaryBox(m_random, m_type);
    if (m_wild && OnceIn(m_random, 50)) {
      return m_host.Ask("draw_1d", Functions().draw1D, m_handle, static_cast<const char*>(nullptr), box.width,
                        box.height);
    }
    const std::string text = TextFor(m_random, m_type);
    if (anything) {
      return DrawAnyWay(text, box);
    }
    DrawOwnWay(text, box, way);
  }

  void DrawOwnWay(const std::string& text, Box box, int way) {
    if (IsMatrix(m_type) && way < 8) {
      return m_host.Ask("draw_2d", Functions().draw2D, m_handle, text.c_str(), box.width);
    }
    if (IsMatrix(m_type) && way < 15) {
      return m_host.Ask("draw_2d_rect", Functions().draw2DRect, m_handle, text.c_str(), box.width,
                        box.height);
    }
    if (m_type == BARCODE_GS1_128 && way < 8) {
      return m_host.Ask("draw_convenience", Functions().drawConvenience, m_handle,
                        PaymentText(m_random).c_str(), box.width, box.height);
    }
    if (m_type == BARCODE_GS1_DATABAR_EXPANDED && way < 5) {
      return m_host.Ask("draw_stacked", Functions().drawStacked, m_handle, text.c_str(), box.width,
                        box.height);
    }
    if (m_type == BARCODE_GS1_DATABAR_14 && way < 2) {
      return m_host.Ask("encode_14", Functions().encode14, m_handle, text.c_str());
    }
    if (m_type == BARCODE_YUBIN_CUSTOMER && way < 8) {
      return m_host.Ask("draw_yubin", Functions().drawYubin, m_handle, text.c_str(), PostalHeight());
    }
    if (m_type == BARCODE_YUBIN_CUSTOMER && way < 12) {
      return m_host.Ask("draw_yubin_with_width", Functions().drawYubinWithWidth, m_handle, text.c_str(),
                        box.width, PostalHeight());
    }
    if (m_type == BARCODE_YUBIN_CUSTOMER && !m_wild) {
      box.height = PostalHeight();
    }
    m_host.Ask("draw_1d", Functions().draw1D, m_handle, text.c_str(), box.width, box.height);
  }

  int PostalHeight() { return OnceIn(m_random, 20) ? m_random.Number(-2, 3) : m_random.Number(4, 80); }

  void DrawAnyWay(const std::string& text, Box box) {
    switch (m_random.Number(0, 7)) {
      case 0:
        return m_host.Ask("draw_1d", Functions().draw1D, m_handle, text.c_str(), box.width, box.height);
      case 1:
        return m_host.Ask("draw_2d", Functions().draw2D, m_handle, text.c_str(), box.width);
      case 2:
        return m_host.Ask("draw_2d_rect", Functions().draw2DRect, m_handle, text.c_str(), box.width,
                          box.height);
      case 3:
        return m_host.Ask("draw_convenience", Functions().drawConvenience, m_handle, text.c_str(), box.width,
                          box.height);
      case 4:
        return m_host.Ask("draw_stacked", Functions().drawStacked, m_handle, text.c_str(), box.width,
                          box.height);
      case 5:
        return m_host.Ask("draw_yubin", Functions().drawYubin, m_handle, text.c_str(), PostalHeight());
      case 6:
        return m_host.Ask("draw_yubin_with_width", Functions().drawYubinWithWidth, m_handle, text.c_str(),
                          box.width, PostalHeight());
      default:
        return m_host.Ask("encode_14", Functions().encode14, m_handle, text.c_str());
    }
  }

  // The result of the draw, as a host fetches it that knows the format.
  void FetchDrawn() {
    if (m_options.IsSvg()) {
      return m_host.Fetch("get_svg", Functions().getSvg, m_handle);
    }
    if (OnceIn(m_random, 3)) {
      return m_host.Fetch("get_base64", Functions().getBase64, m_handle);
    }
    m_host.FetchImage(m_handle);
  }

  void FetchAnything() {
    for (int count = m_random.Number(1, 3); count > 0; --count) {
      switch (m_random.Number(0, 9)) {
        case 0:
        case 1:
          m_host.Fetch("get_svg", Functions().getSvg, m_handle);
          break;
        case 2:
        case 3:
          m_host.Fetch("get_base64", Functions().getBase64, m_handle);
          break;
        case 4:
        case 5:
        case 6:
          m_host.FetchImage(m_handle);
          break;
        case 7:
          m_host.Fetch("get_symbol_type_14", Functions().getSymbolType14, m_handle);
          break;
        case 8:
          m_host.Ask("is_svg_output", Functions().isSvgOutput, m_handle);
          break;
        default:
          m_host.FetchImageWithoutLength(m_handle);
          break;
      }
    }
  }

  Host& m_host;
  RandomText& m_random;
  Options m_options;
  int m_type;
  bool m_wild;
  BarcodeHandle m_handle;
};

// One object, from one draw to a dozen.
void RunRandom(Host& host, RandomText& random, int type) {
  const bool wild = OnceIn(random, 3);
  Object object(host, random, type, wild);
  for (int draw = 0, draws = OnceIn(random, 3) ? 1 : random.Number(2, 12); draw < draws; ++draw) {
    object.Step(draw == 0);
  }
  object.LookAgain();
  object.Destroy();
}

// Several objects of several types in turn, for whatever they may share unseen.
void RunMixed(Host& host, RandomText& random) {
  const bool wild = OnceIn(random, 4);
  std::vector<Object> objects;
  for (int count = random.Number(2, 5); count > 0; --count) {
    objects.emplace_back(host, random, random.Number(0, kTypes - 1), wild);
  }
  for (int draws = random.Number(4, 15); draws > 0; --draws) {
    objects[static_cast<std::size_t>(random.Number(0, static_cast<int>(objects.size()) - 1))].Step(false);
  }
  host.ForgetLast();
  for (Object& object : objects) {
    object.Destroy();
  }
}

// No object: numbers without a symbology, null handles, check digits.
void RunNone(Host& host, RandomText& random) {
  static constexpr int kNumbers[] = {kMin, -1, kTypes, kTypes + 1, 100, kMax};
  BarcodeHandle const none = host.Create(OneOf(random, kNumbers));
  Options options(host, random, random.Number(0, kTypes - 1), true);
  for (int count = random.Number(1, 5); count > 0; --count) {
    options.SetSomething(none);
  }
  host.Ask("draw_1d", host.Functions().draw1D, none, "123", 100, 50);
  host.Ask("draw_2d", host.Functions().draw2D, none, "123", 100);
  host.Ask("draw_2d_rect", host.Functions().draw2DRect, none, "123", 100, 50);
  host.Ask("draw_convenience", host.Functions().drawConvenience, none, "123", 100, 50);
  host.Ask("draw_stacked", host.Functions().drawStacked, none, "123", 100, 50);
  host.Ask("draw_yubin", host.Functions().drawYubin, none, "123", 50);
  host.Ask("draw_yubin_with_width", host.Functions().drawYubinWithWidth, none, "123", 100, 50);
  host.Ask("encode_14", host.Functions().encode14, none, "123");
  host.Ask("is_svg_output", host.Functions().isSvgOutput, none);
  host.Fetch("get_svg", host.Functions().getSvg, none);
  host.Fetch("get_base64", host.Functions().getBase64, none);
  host.Fetch("get_symbol_type_14", host.Functions().getSymbolType14, none);
  host.FetchImage(none);
  host.FetchImageWithoutLength(none);
  for (int count = random.Number(1, 10); count > 0; --count) {
    host.CheckDigit(OnceIn(random, 3) ? random.Of("0123456789aA {-", 0, 16).c_str()
                                      : random.Digits(13, 13).c_str());
  }
  host.CheckDigit(nullptr);
  host.Destroy(none);
}

// An ordinary text with all options as they come, once as each kind of document.
void RunOrdinary(Host& host, int type, const std::string& text) {
  const Library& functions = host.Functions();
  BarcodeHandle const handle = host.Create(type);
  const Box box = IsMatrix(type) ? Box{200, 200} : Box{300, 100};
  for (const int fitWidth : {0, 1}) {
    host.Set("set_fit_width", functions.setFitWidth, handle, fitWidth);
    for (const char* const format : {"png", "svg"}) {
      host.Set("set_output_format", functions.setOutputFormat, handle, format);
      host.Ask("draw_1d", functions.draw1D, handle, text.c_str(), box.width, box.height);
      host.FetchImage(handle);
      host.Fetch("get_base64", functions.getBase64, handle);
      host.Fetch("get_svg", functions.getSvg, handle);
    }
  }
  host.ForgetLast();
  host.Destroy(handle);
}

int TypeNamed(const std::string& name) {
  const auto named = std::find_if(kRecordedTypes.begin(), kRecordedTypes.end(),
                                  [name](const RecordedType& type) { return type.name == name; });
  return static_cast<int>(named - kRecordedTypes.begin());
}

int NumberIn(const std::string& digits) {
  if (digits.empty() || digits.size() > 9 || digits.find_first_not_of("0123456789") != std::string::npos) {
    throw std::runtime_error("no such session: " + digits);
  }
  return std::stoi(digits);
}

void RunOrdinary(Host& host, int type, int number) {
  const std::vector<std::string> texts = type < kTypes ? OrdinaryTexts(type) : std::vector<std::string>();
  if (number >= static_cast<int>(texts.size())) {
    throw std::runtime_error("no such session: f" + std::to_string(number));
  }
  RunOrdinary(host, type, texts[static_cast<std::size_t>(number)]);
}

}  // namespace

std::vector<SessionName> AllSessions(const std::string& type, int sessions) {
  std::vector<std::string> types;
  types.reserve(kRecordedTypes.size() + 2);
  for (int each = 0; each < kTypes; ++each) {
    types.emplace_back(TypeName(each));
  }
  types.insert(types.end(), {kMixed, kNone});
  if (!type.empty() && std::find(types.begin(), types.end(), type) == types.end()) {
    throw std::runtime_error("no such type: " + type);
  }
  std::vector<SessionName> names;
  for (const std::string& name : types) {
    if (!type.empty() && type != name) {
      continue;
    }
    const int number = TypeNamed(name);
    const std::size_t ordinary = number < kTypes ? OrdinaryTexts(number).size() : 0;
    for (std::size_t i = 0; i < ordinary; ++i) {
      names.push_back({name, "f" + std::to_string(i)});
    }
    for (int i = 0; i < sessions; ++i) {
      names.push_back({name, std::to_string(i)});
    }
  }
  return names;
}

bool StreamsJoined(const SessionName& name) {
  return name.session.front() != 'f' && NumberIn(name.session) % 4 == 3;
}

void RunSession(Host& host, const SessionName& name, int seed) {
  const int type = TypeNamed(name.type);
  if (name.session.starts_with('f')) {
    return RunOrdinary(host, type, NumberIn(name.session.substr(1)));
  }
  RandomText random(
      Hash(std::to_string(seed) + " " + name.type + " " + std::to_string(NumberIn(name.session))));
  if (type < kTypes) {
    RunRandom(host, random, type);
  } else if (name.type == kMixed) {
    RunMixed(host, random);
  } else if (name.type == kNone) {
    RunNone(host, random);
  } else {
    throw std::runtime_error("no such type: " + name.type);
  }
}

}  // namespace barcode::same
