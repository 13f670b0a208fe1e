// The n-th allocation fails: one alone, two or eight in a row, or all from there on, for n = 1, 2, ... until
// a call comes to its end without asking for the n-th. Nothing may crash, a result is whole or refused, and
// afterwards everything works as if nothing had happened.
//
//   host_fault_tests --gtest_filter='*Allocation*'       BARCODE_FAULT_TRACE=1 adds where allocations failed
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "barcode.h"
#include "faults/allocations.h"
#include "faults/interposed.h"
#include "faults/isolated.h"
#include "support/image.h"
#include "support/symbologies.h"

namespace barcode::test {
namespace {

// One allocation is that of the shaper's functions; in repetitions it is met under two numbers.
constexpr long kLostTexts = 2;
constexpr int kMaxFindings = 8;
constexpr int kMaxCrashes = 4;

bool Is2D(int type) {
  return IsTwoDimensional(type);
}

// A draw that is tried.
struct DrawCase {
  std::string name;
  int type = 0;
  const char* format = "png";
  std::function<int(BarcodeHandle, const char*)> draw;
  std::string text;
  std::string earlierText;  // of another draw; also valid
  std::function<void(BarcodeHandle)> configure = [](BarcodeHandle) {};

  bool IsSvg() const { return std::strcmp(format, "svg") == 0; }
};

std::ostream& operator<<(std::ostream& out, const DrawCase& drawCase) {
  return out << drawCase.name;
}

// A handle with the options of a case; destroyed with its scope.
class Object {
 public:
  explicit Object(int type) : m_handle(barcode_create(type)) {}
  explicit Object(const DrawCase& drawCase) : Object(drawCase.type) { Configure(drawCase); }
  ~Object() { barcode_destroy(m_handle); }
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  void Configure(const DrawCase& drawCase) const {
    barcode_set_output_format(m_handle, drawCase.format);
    drawCase.configure(m_handle);
  }

  int Draw(const DrawCase& drawCase) const { return drawCase.draw(m_handle, drawCase.text.c_str()); }

  // The PNG bytes or the SVG document. Valid until the next call.
  std::string_view Fetch(const DrawCase& drawCase) const {
    return drawCase.IsSvg() ? std::string_view(barcode_get_svg(m_handle)) : Png();
  }

  std::string_view Png() const {
    int length = 0;
    const unsigned char* const bytes = barcode_get_image_data(m_handle, &length);
    return bytes == nullptr
               ? std::string_view()
               : std::string_view(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
  }

  BarcodeHandle Handle() const { return m_handle; }

 private:
  BarcodeHandle m_handle;
};

Image Decoded(std::string_view png) {
  return DecodePng({reinterpret_cast<const std::uint8_t*>(png.data()), png.size()});
}

// What a case gives when nothing fails, and pictures that lack the text.
struct Reference {
  std::string result;
  std::string earlierResult;
  std::string base64;
  std::string out;
  std::string err;
  Image picture;
  Image withoutGlyphs;  // each glyph failed to be rendered
  Image withoutFont;    // there is no font, not even to measure with
  int safeRows = 0;     // so many rows at the top are the same in all three
};

void CheckDrawn(int drawn) {
  if (drawn != 1) {
    throw std::runtime_error("a draw failed though nothing was wrong");
  }
}

int SafeRows(const Reference& reference) {
  const auto sameRow = [&](const Image& other, int y) {
    const auto begin = static_cast<std::ptrdiff_t>(y) * reference.picture.width;
    const auto end = begin + reference.picture.width;
    return std::equal(reference.picture.pixels.begin() + begin, reference.picture.pixels.begin() + end,
                      other.pixels.begin() + begin);
  };
  int y = 0;
  while (y < reference.picture.height && sameRow(reference.withoutGlyphs, y) &&
         sameRow(reference.withoutFont, y)) {
    ++y;
  }
  return y;
}

// Draws in a process that never called the library, and keeps this one in that state.
Reference MakeReference(const DrawCase& drawCase) {
  Legacy& legacy = SharedLegacy();
  legacy.used = 0;
  const auto bequeathField = [](std::string_view field) {
    const std::size_t size = field.size();
    Bequeath({reinterpret_cast<const char*>(&size), sizeof size});
    Bequeath(field);
  };
  const std::string end = RunInChild([&] {
    static Streams streams;
    if (drawCase.IsSvg()) {
      bequeathField("");
      bequeathField("");
    } else {
      {
        const Failing noFont(Fault::OpenFont);
        const Object object(drawCase);
        CheckDrawn(object.Draw(drawCase));
        bequeathField(object.Png());
      }
      const Failing noGlyphs(Fault::RenderText);
      const Object object(drawCase);
      CheckDrawn(object.Draw(drawCase));
      bequeathField(object.Png());
    }
    const Object object(drawCase);
    CheckDrawn(drawCase.draw(object.Handle(), drawCase.earlierText.c_str()));
    bequeathField(object.Fetch(drawCase));
    streams.Clear();
    CheckDrawn(object.Draw(drawCase));
    bequeathField(streams.Out());
    bequeathField(streams.Err());
    bequeathField(object.Fetch(drawCase));
    bequeathField(barcode_get_base64(object.Handle()));
  });
  EXPECT_EQ(end, "");
  std::string_view rest(legacy.text.data(), legacy.used);
  const auto nextField = [&rest] {
    std::size_t size = 0;
    std::memcpy(&size, rest.data(), sizeof size);
    std::string field(rest.substr(sizeof size, size));
    rest.remove_prefix(sizeof size + size);
    return field;
  };
  Reference reference;
  reference.withoutFont = Decoded(nextField());
  reference.withoutGlyphs = Decoded(nextField());
  reference.earlierResult = nextField();
  reference.out = nextField();
  reference.err = nextField();
  reference.result = nextField();
  reference.base64 = nextField();
  if (!drawCase.IsSvg()) {
    reference.picture = Decoded(reference.result);
    reference.safeRows = SafeRows(reference);
  }
  return reference;
}

bool StartsWithAny(std::string_view line, const std::vector<std::string_view>& beginnings) {
  return std::any_of(beginnings.begin(), beginnings.end(),
                     [&](std::string_view beginning) { return line.starts_with(beginning); });
}

template <class Visit>
void ForEachLine(std::string_view text, Visit visit) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
    visit(text.substr(0, end));
    text.remove_prefix(end);
  }
}

// The lines of which each tells that text is missing; and those of GS1 DataBar about nothing.
const std::vector<std::string_view> kTextLines = {"OpenEmbeddedRobotoFont: ",
                                                  "OpenEmbeddedRobotoFont error: ",
                                                  "TTF_OpenFont error: ",
                                                  "TTF_RenderUTF8_Blended error: ",
                                                  "SDL_CreateTextureFromSurface error: ",
                                                  "SDL_SetTextureBlendMode error: ",
                                                  "SDL_RenderCopy error: ",
                                                  "SDL_ttfの初期化に失敗: ",
                                                  "フォントの読み込みに失敗: "};
constexpr std::string_view kDebug = "DEBUG ";

bool TellsThatTextIsMissing(std::string_view err) {
  bool isTold = false;
  ForEachLine(err, [&](std::string_view line) { isTold = isTold || StartsWithAny(line, kTextLines); });
  return isTold;
}

bool OnlyTellsThatTextIsMissing(std::string_view err) {
  bool isOther = false;
  ForEachLine(err, [&](std::string_view line) {
    isOther = isOther || !(line.starts_with(kDebug) || StartsWithAny(line, kTextLines));
  });
  return !isOther;
}

bool HasReason(std::string_view err) {
  bool has = false;
  ForEachLine(err, [&](std::string_view line) {
    has = has || (!line.starts_with(kDebug) && line.size() > 1 && line.ends_with('\n'));
  });
  return has;
}

// True for a picture that lacks nothing but text.
bool LacksOnlyText(const Image& picture, const Reference& reference, bool isPaymentForm) {
  const Image& whole = reference.picture;
  if (picture.width != whole.width || picture.height != whole.height || reference.safeRows == 0) {
    return false;
  }
  if (picture == reference.withoutFont) {
    return true;
  }
  // The payment form sets its lines in what room their measures leave.
  const auto safePixels =
      static_cast<std::size_t>(reference.safeRows) * static_cast<std::size_t>(whole.width);
  for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
    const bool isAccepted = picture.pixels[i] == whole.pixels[i] ||
                            picture.pixels[i] == reference.withoutGlyphs.pixels[i] ||
                            (isPaymentForm && i >= safePixels);
    if (!isAccepted) {
      return false;
    }
  }
  return true;
}

// Modes
// -------------------------------------------------------------------------------------------------------

struct Mode {
  const char* name;
  long count;
};
constexpr std::array<Mode, 4> kModes = {{{"one", 1}, {"two", 2}, {"eight", 8}, {"for good", kForGood}}};

// On which thread the armed call is made.
enum class Where { kThisThread, kNewThread };

void FindLoss(long blocks) {
  ++SharedLegacy().findings;
  if (SharedLegacy().findings <= kMaxFindings) {
    Bequeath("  n = " + std::to_string(SharedLegacy().point) + ": " + std::to_string(blocks) +
             " blocks more are held than before; of the call with the fault:\n" + DescribeSurvivingBlocks() +
             DescribeFault());
  }
}

// A call with a fault in it, and everything around it that is checked.
class Trial {
 public:
  Trial() = default;
  virtual ~Trial() = default;
  Trial(const Trial&) = delete;
  Trial& operator=(const Trial&) = delete;

  // True when the fault was reached.
  virtual bool Run(const AllocationFault& fault) = 0;

  // Blocks that are known to be lost in the call that Run made last.
  virtual long KnownLosses() const { return 0; }

  void On(Where where) { m_where = where; }
  void In(Streams& streams) { m_streams = &streams; }

 protected:
  void Find(const char* what, const std::string& detail = {}) {
    ++SharedLegacy().findings;
    if (SharedLegacy().findings <= kMaxFindings) {
      Bequeath("  n = " + std::to_string(SharedLegacy().point) + ": " + what + '\n' + detail +
               DescribeFault());
    }
  }

  void Expect(bool condition, const char* what) {
    if (!condition) {
      Find(what);
    }
  }

  // A new handle draws what the reference has. Returns false when there is no text, and never will be: the
  // shaper below the font library makes its functions when the first font is opened, and goes without them
  // for good if there is no memory. Each new handle says so.
  bool ExpectUsualDraw(const DrawCase& drawCase, const Reference& reference) {
    SetStage("a draw without faults");
    StreamsOf().Clear();
    const Object object(drawCase);
    const bool isTextLost = StreamsOf().Err() == "フォントの読み込みに失敗: Out of memory\n";
    const bool isDrawn = object.Draw(drawCase) == 1;
    const std::string_view result = object.Fetch(drawCase);
    Expect(isDrawn && (isTextLost && !drawCase.IsSvg() ? Decoded(result) == reference.withoutFont
                                                       : result == reference.result),
           "a new handle draws otherwise afterwards");
    SharedLegacy().number += isTextLost ? 1 : 0;
    return !isTextLost;
  }

  // Calls `call` while allocations fail, on the trial's thread. True when one did fail.
  template <class Call>
  bool Armed(const AllocationFault& fault, Call call) {
    const auto run = [&] {
      const FailingAllocations failing(fault);
      call();
    };
    if (m_where == Where::kNewThread) {
      std::thread([&] {
        const CrashStack stack;
        run();
      }).join();
    } else {
      run();
    }
    return FailingAllocations::Fired();
  }

  Streams& StreamsOf() { return *m_streams; }

 private:
  Where m_where = Where::kThisThread;
  Streams* m_streams = nullptr;
};

class DrawTrial : public Trial {
 public:
  DrawTrial(const DrawCase& drawCase, const Reference& reference)
      : m_case(drawCase), m_reference(reference) {}

  bool Run(const AllocationFault& fault) override {
    const Object object(m_case);
    if (m_case.IsSvg()) {
      drawEarlier(object);
    }
    StreamsOf().Clear();
    SetStage("the draw");
    int drawn = -1;
    const bool fired = Armed(fault, [&] { drawn = object.Draw(m_case); });
    SetStage("the fetch after the draw");
    const std::string_view err = StreamsOf().Err();
    if (drawn == 1) {
      CheckDone(object, err);
    } else {
      CheckRefused(object, drawn, err);
    }
    CheckNextDraw(object, "the same handle draws otherwise afterwards");
    const Object other(m_case);
    CheckNextDraw(other, "a new handle draws otherwise afterwards");
    return fired;
  }

 private:
  void drawEarlier(const Object& object) {
    Expect(m_case.draw(object.Handle(), m_case.earlierText.c_str()) == 1, "an earlier draw fails");
  }

  void CheckDone(const Object& object, std::string_view err) {
    if (m_case.IsSvg() || !TellsThatTextIsMissing(err)) {
      Expect(err == m_reference.err, "the draw returned 1 and standard error differs");
      Expect(StreamsOf().Out() == m_reference.out, "the draw returned 1 and standard output differs");
      Expect(object.Fetch(m_case) == m_reference.result, "the draw returned 1 and the result is not whole");
      return;
    }
    Expect(OnlyTellsThatTextIsMissing(err), "the draw returned 1 and an unknown line is on standard error");
    const std::string_view png = object.Png();
    Expect(png == m_reference.result ||
               LacksOnlyText(Decoded(png), m_reference, m_case.name.starts_with("PaymentForm")),
           "the draw returned 1 and more than text is missing");
  }

  void CheckRefused(const Object& object, int drawn, std::string_view err) {
    Expect(drawn == 0, "the draw returned neither 0 nor 1");
    Expect(HasReason(err), "the draw returned 0 without a line on standard error");
    const std::string_view result = object.Fetch(m_case);
    if (m_case.IsSvg()) {
      Expect(result == m_reference.earlierResult, "a failed draw changed the earlier document");
    }
  }

  void CheckNextDraw(const Object& object, const char* what) {
    SetStage("a draw without faults");
    StreamsOf().Clear();
    const bool isDrawn = object.Draw(m_case) == 1;
    Expect(isDrawn && object.Fetch(m_case) == m_reference.result && StreamsOf().Err() == m_reference.err,
           what);
  }

  const DrawCase& m_case;
  const Reference& m_reference;
};

// Draws that are refused whatever the memory: the text is bad.
class RefusedDrawTrial : public Trial {
 public:
  RefusedDrawTrial(const DrawCase& drawCase, const Reference& reference)
      : m_case(drawCase), m_reference(reference) {}

  bool Run(const AllocationFault& fault) override {
    const Object object(m_case);
    StreamsOf().Clear();
    SetStage("the refused draw");
    int drawn = -1;
    const bool fired =
        Armed(fault, [&] { drawn = m_case.draw(object.Handle(), Is2D(m_case.type) ? "" : "\xFF"); });
    Expect(drawn == 0, "a bad text was drawn");
    Expect(HasReason(StreamsOf().Err()), "a bad text was refused without a line on standard error");
    SetStage("a draw without faults");
    Expect(object.Draw(m_case) == 1 && object.Fetch(m_case) == m_reference.result,
           "the handle draws otherwise afterwards");
    return fired;
  }

 private:
  const DrawCase& m_case;
  const Reference& m_reference;
};

class CreateTrial : public Trial {
 public:
  CreateTrial(const DrawCase& drawCase, const Reference& reference)
      : m_case(drawCase), m_reference(reference) {}

  bool Run(const AllocationFault& fault) override {
    StreamsOf().Clear();
    SetStage("barcode_create");
    std::optional<Object> object;
    const bool fired = Armed(fault, [&] { object.emplace(m_case.type); });
    SetStage("a draw with the new handle");
    const bool isTextMissing = TellsThatTextIsMissing(StreamsOf().Err());
    Expect(isTextMissing || StreamsOf().Err().empty(), "barcode_create wrote an unknown line");
    if (object->Handle() != nullptr) {
      object->Configure(m_case);
      const bool isDrawn = object->Draw(m_case) == 1;
      Expect(isDrawn, "the new handle does not draw");
      const std::string_view result = object->Fetch(m_case);
      Expect(result == m_reference.result ||
                 (isTextMissing && !m_case.IsSvg() && Decoded(result) == m_reference.withoutFont),
             "the new handle draws otherwise");
    } else {
      Expect(fired, "barcode_create fails without a fault");
    }
    const bool hasText = ExpectUsualDraw(m_case, m_reference);
    if (object->Handle() != nullptr && hasText) {
      Expect(object->Draw(m_case) == 1 && object->Fetch(m_case) == m_reference.result,
             "the handle draws otherwise afterwards");
    }
    return fired;
  }

 private:
  const DrawCase& m_case;
  const Reference& m_reference;
};

// The encoder of SDL_image, when libpng leaves it by a jump, loses its list of row addresses.
class FetchTrial : public Trial {
 public:
  FetchTrial(const DrawCase& drawCase, const Reference& reference)
      : m_case(drawCase), m_reference(reference) {}

 protected:
  long KnownLosses() const override {
    const auto height = static_cast<std::size_t>(m_reference.picture.height);
    return m_hasFailed ? std::min(1L, SurvivingBlocks("libSDL2-", height * sizeof(void*))) : 0;
  }

  bool SaysWhy() { return StreamsOf().Out().find("ERROR: ") != std::string_view::npos; }
  void SetFailed(bool hasFailed) { m_hasFailed = hasFailed; }

  void CheckNextDraw(const Object& object) {
    SetStage("a draw without faults");
    Expect(object.Draw(m_case) == 1 && object.Fetch(m_case) == m_reference.result,
           "the handle draws otherwise afterwards");
  }

  const DrawCase& m_case;
  const Reference& m_reference;

 private:
  bool m_hasFailed = false;
};

class PngTrial : public FetchTrial {
 public:
  using FetchTrial::FetchTrial;

  bool Run(const AllocationFault& fault) override {
    const Object object(m_case);
    Expect(object.Draw(m_case) == 1, "a draw fails");
    StreamsOf().Clear();
    SetStage("barcode_get_image_data");
    std::string_view png;
    const bool fired = Armed(fault, [&] { png = object.Png(); });
    SetFailed(png.empty());
    Expect(png.empty() ? fired : png == m_reference.result, "the PNG file is not whole");
    SetStage("a fetch without faults");
    Expect(object.Png() == m_reference.result, "the next fetch gives something else");
    CheckNextDraw(object);
    return fired;
  }
};

class Base64Trial : public FetchTrial {
 public:
  using FetchTrial::FetchTrial;

  bool Run(const AllocationFault& fault) override {
    const Object object(m_case);
    Expect(object.Draw(m_case) == 1, "a draw fails");
    StreamsOf().Clear();
    SetStage("barcode_get_base64");
    std::string_view uri;
    const bool fired = Armed(fault, [&] { uri = barcode_get_base64(object.Handle()); });
    SetFailed(uri != m_reference.base64);
    const bool isRefused = uri.empty() || uri.starts_with("Error: ");
    // The transparent picture, when the encoder failed and said so: the canvas is released then.
    const bool isFallback = uri.size() < 200 && uri.starts_with("data:image/png;base64,iVBOR") && SaysWhy();
    Expect(uri == m_reference.base64 || (fired && (isRefused || isFallback)), "the data URI is not whole");
    if (isRefused) {
      SetStage("a fetch without faults");
      Expect(barcode_get_base64(object.Handle()) == m_reference.base64,
             "the next fetch gives something else");
    }
    CheckNextDraw(object);
    return fired;
  }
};

class SvgTrial : public FetchTrial {
 public:
  using FetchTrial::FetchTrial;

  bool Run(const AllocationFault& fault) override {
    const Object object(m_case);
    Expect(object.Draw(m_case) == 1, "a draw fails");
    SetStage("barcode_get_svg");
    std::string_view document;
    const bool fired = Armed(fault, [&] { document = barcode_get_svg(object.Handle()); });
    Expect(document.empty() ? fired : document == m_reference.result, "the document is not whole");
    SetStage("a fetch without faults");
    Expect(barcode_get_svg(object.Handle()) == m_reference.result, "the next fetch gives something else");
    CheckNextDraw(object);
    return fired;
  }
};

// Creates again and again while the process is short of memory, without a call in between that could mend
// something: what each attempt leaves behind must not add up.
class RepeatedCreateTrial : public Trial {
 public:
  RepeatedCreateTrial(const DrawCase& drawCase, const Reference& reference)
      : m_case(drawCase), m_reference(reference) {}

  bool Run(const AllocationFault& fault) override {
    constexpr int kAttempts = 6;
    SetStage("barcode_create");
    bool fired = false;
    long smallestLoss = kForGood;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
      const long before = LiveBlocks();
      fired = Armed(fault, [&] { barcode_destroy(barcode_create(m_case.type)); }) || fired;
      smallestLoss = std::min(smallestLoss, LiveBlocks() - before);
    }
    if (smallestLoss > 0) {
      FindLoss(smallestLoss);
    }
    ExpectUsualDraw(m_case, m_reference);
    return fired;
  }

 private:
  const DrawCase& m_case;
  const Reference& m_reference;
};

using TextSetter = void (*)(BarcodeHandle, const char*);

// A keyword that is longer than any that is known, and than what a string holds without memory.
constexpr const char* kLongKeyword = "a keyword that nobody knows and that takes memory";

class SetterTrial : public Trial {
 public:
  SetterTrial(TextSetter setter, const char* usual, const DrawCase& drawCase, const Reference& reference)
      : m_setter(setter), m_usual(usual), m_case(drawCase), m_reference(reference) {}

  bool Run(const AllocationFault& fault) override {
    const Object object(m_case);
    StreamsOf().Clear();
    SetStage("a setter");
    const bool fired = Armed(fault, [&] { m_setter(object.Handle(), kLongKeyword); });
    SetStage("a draw after a setter");
    (void)object.Draw(m_case);
    m_setter(object.Handle(), m_usual);
    Expect(object.Draw(m_case) == 1 && object.Fetch(m_case) == m_reference.result,
           "the handle draws otherwise afterwards");
    return fired;
  }

 private:
  TextSetter m_setter;
  const char* m_usual;
  const DrawCase& m_case;
  const Reference& m_reference;
};

class EncodeTrial : public Trial {
 public:
  bool Run(const AllocationFault& fault) override {
    const Object object(BARCODE_GS1_DATABAR_14);
    StreamsOf().Clear();
    SetStage("barcode_encode_14");
    int encoded = -1;
    const bool fired = Armed(fault, [&] { encoded = barcode_encode_14(object.Handle(), "2001234567890"); });
    Expect(encoded == 1 || (fired && encoded == 0 && HasReason(StreamsOf().Err())),
           "barcode_encode_14 fails without a line");
    Expect(barcode_encode_14(object.Handle(), "2001234567890") == 1, "the next encoding fails");
    SetStage("barcode_calculate_check_digit_14");
    std::string_view digit;
    const bool firedAgain = Armed(fault, [&] { digit = barcode_calculate_check_digit_14("2001234567890"); });
    Expect(digit == "9" || (firedAgain && digit.empty()), "a wrong check digit");
    return fired || firedAgain;
  }
};

// Running
// ------------------------------------------------------------------------------------------------------

// A step of a trial between two counts of the blocks that the process holds.
struct Step {
  bool fired = false;
  long blocks = 0;  // held more than before
};

Step RunStep(Trial& trial, const AllocationFault& fault) {
  StillAlive();
  const long before = LiveBlocks();
  Step step;
  step.fired = trial.Run(fault);
  SetStage("after all");
  step.blocks = LiveBlocks() - before - trial.KnownLosses();
  return step;
}

// What is found at all points of a call in one mode.
class Findings {
 public:
  explicit Findings(std::string title) : m_title(std::move(title)) { SharedLegacy() = Legacy(); }

  ~Findings() {
    const Legacy& legacy = SharedLegacy();
    std::printf("    %-24s %6ld points\n", m_title.c_str(), m_points);
    if (legacy.findings > 0 || !m_crashes.empty()) {
      ADD_FAILURE() << m_title << ": " << legacy.findings << " findings\n"
                    << std::string_view(legacy.text.data(), legacy.used) << m_crashes;
    }
  }
  Findings(const Findings&) = delete;
  Findings& operator=(const Findings&) = delete;

  // False when it is time to give up.
  bool Crashed(const std::string& end) {
    const Legacy& legacy = SharedLegacy();
    m_crashes += "  n = " + std::to_string(legacy.point) + ": " + legacy.stage.data() + ' ' + end;
    return ++m_crashCount < kMaxCrashes;
  }

  void SetPoints(long points) { m_points = points; }

 private:
  std::string m_title;
  std::string m_crashes;
  int m_crashCount = 0;
  long m_points = 0;
};

// The blocks lost at a point: of several tries the fewest, for caches settle.
Step RunPoint(Trial& trial, const AllocationFault& fault, long usual) {
  Step step = RunStep(trial, fault);
  for (int tries = 0; tries < 3 && step.blocks > usual; ++tries) {
    step.blocks = std::min(step.blocks, RunStep(trial, fault).blocks);
  }
  return step;
}

// All points in one process that has made the same calls before; a new one after each crash.
void TryWarm(Trial& trial, const Mode& mode, const std::string& title) {
  Findings findings(title + ", " + mode.name);
  Legacy& legacy = SharedLegacy();
  bool isDone = false;
  while (!isDone) {
    const std::string end = RunInChild([&] {
      static Streams streams;
      trial.In(streams);
      const long first = legacy.point;
      (void)RunStep(trial, kNoFault);
      (void)RunStep(trial, kNoFault);
      const long usual = RunStep(trial, kNoFault).blocks;
      bool fired = true;
      for (long point = first + 1; fired; ++point) {
        legacy.point = point;
        const Step step = RunPoint(trial, {.first = point, .count = mode.count}, usual);
        if (step.blocks > usual) {
          FindLoss(step.blocks - usual);
        }
        fired = step.fired;
      }
    });
    isDone = end.empty() || !findings.Crashed(end);
  }
  findings.SetPoints(legacy.point - 1);
}

// Each point in a process that has not called the library before. What such a process loses it loses once.
void TryCold(Trial& trial, const Mode& mode, const std::string& title) {
  Findings findings(title + ", " + mode.name);
  Legacy& legacy = SharedLegacy();
  const auto runOne = [&](const AllocationFault& fault) {
    return RunInChild([&] {
      static Streams streams;
      trial.In(streams);
      legacy.isDone = !RunStep(trial, fault).fired;
    });
  };
  EXPECT_EQ(runOne(kNoFault), "");
  legacy.isDone = false;
  bool goOn = true;
  while (goOn && !legacy.isDone) {
    ++legacy.point;
    const std::string end = runOne({.first = legacy.point, .count = mode.count});
    goOn = end.empty() || findings.Crashed(end);
  }
  findings.SetPoints(legacy.point - 1);
  if (legacy.number > 0) {
    std::printf("    %-24s %6ld points after which there is no text\n", "", legacy.number);
  }
  EXPECT_LE(legacy.number, kLostTexts) << title << ", " << mode.name;
}

void TryOnBothThreads(Trial& trial, const std::string& title) {
  for (const Mode& mode : kModes) {
    trial.On(Where::kThisThread);
    TryWarm(trial, mode, title);
    trial.On(Where::kNewThread);
    TryWarm(trial, mode, title + ", new thread");
  }
}

// Cases
// --------------------------------------------------------------------------------------------------------

constexpr const char* kKana = "\xE3\x82\xA2\xE6\xBC\xA2";  // UTF-8: a katakana, a kanji

int Draw1D(BarcodeHandle handle, const char* text) {
  return barcode_draw_1d(handle, text, 110, 50);
}

int Draw2D(BarcodeHandle handle, const char* text) {
  return barcode_draw_2d(handle, text, 48);
}

int Draw2DRect(BarcodeHandle handle, const char* text) {
  return barcode_draw_2d_rect(handle, text, 100, 40);
}

const char* NameOf(int type) {
  static constexpr auto kNames =
      std::to_array<const char*>({"Code39", "Code93", "Code128", "GS1_128", "NW7", "Matrix2of5", "NEC2of5",
                                  "Jan8", "Jan13", "UpcA", "UpcE", "ITF", "GS1DataBar14", "GS1DataBarLimited",
                                  "GS1DataBarExpanded", "YubinCustomer", "QR", "DataMatrix", "PDF417"});
  return kNames.at(static_cast<std::size_t>(type));
}

// Another valid text of the same length: the last digit or letter is another.
std::string OtherText(std::string text) {
  text.back() = text.back() == '1' ? '2' : '1';
  return text;
}

DrawCase CaseOf(int type) {
  DrawCase drawCase;
  drawCase.name = NameOf(type);
  drawCase.type = type;
  drawCase.text = ValidText(type);
  drawCase.draw = Is2D(type) ? &Draw2D : &Draw1D;
  drawCase.earlierText = OtherText(drawCase.text);
  return drawCase;
}

DrawCase PieceCaseOf(int type) {
  DrawCase drawCase = CaseOf(type);
  drawCase.name += "InOnePiece";
  drawCase.configure = [](BarcodeHandle handle) { barcode_set_text_even_spacing(handle, 0); };
  return drawCase;
}

DrawCase KanaCaseOf(int type) {
  DrawCase drawCase = CaseOf(type);
  drawCase.name += "ShiftJis";
  drawCase.text = kKana;
  drawCase.configure = [](BarcodeHandle handle) { barcode_set_string_encoding(handle, "shift-jis"); };
  return drawCase;
}

std::vector<DrawCase> DrawCases() {
  std::vector<DrawCase> cases;
  for (int type = BARCODE_CODE39; type <= BARCODE_PDF417; ++type) {
    cases.push_back(CaseOf(type));
  }
  for (const int type : {BARCODE_QR, BARCODE_DATAMATRIX, BARCODE_PDF417}) {
    cases.push_back(KanaCaseOf(type));
    cases.push_back(CaseOf(type));
    cases.back().name += "Rect";
    cases.back().draw = &Draw2DRect;
  }
  for (const int type : {BARCODE_CODE39, BARCODE_JAN13}) {
    cases.push_back(PieceCaseOf(type));
  }
  for (const bool even : {true, false}) {
    DrawCase form = even ? CaseOf(BARCODE_GS1_128) : PieceCaseOf(BARCODE_GS1_128);
    form.name = even ? "PaymentForm" : "PaymentFormInOnePiece";
    form.text = "9191234500000000001234567890123456789012345";
    form.earlierText = "9191234500000000001234567890123456789012346";
    form.draw = [](BarcodeHandle handle, const char* text) {
      return barcode_draw_convenience(handle, text, 220, 60);
    };
    cases.push_back(form);
  }
  cases.push_back(CaseOf(BARCODE_GS1_DATABAR_EXPANDED));
  cases.back().name = "GS1DataBarExpandedStacked";
  cases.back().draw = [](BarcodeHandle handle, const char* text) {
    return barcode_draw_stacked(handle, text, 110, 80);
  };
  cases.push_back(CaseOf(BARCODE_GS1_DATABAR_14));
  cases.back().name = "GS1DataBar14Stacked";
  cases.back().configure = [](BarcodeHandle handle) { barcode_set_symbol_type_14(handle, "STACKED"); };
  for (const bool hasWidth : {false, true}) {
    cases.push_back(CaseOf(BARCODE_YUBIN_CUSTOMER));
    cases.back().name = hasWidth ? "YubinWithWidth" : "Yubin";
    cases.back().draw = [hasWidth](BarcodeHandle handle, const char* text) {
      return hasWidth ? barcode_draw_yubin_with_width(handle, text, 100, 12)
                      : barcode_draw_yubin(handle, text, 12);
    };
  }
  return cases;
}

std::vector<DrawCase> InBothFormats() {
  std::vector<DrawCase> cases;
  for (const DrawCase& drawCase : DrawCases()) {
    cases.push_back(drawCase);
    cases.back().name += "_png";
    cases.push_back(drawCase);
    cases.back().name += "_svg";
    cases.back().format = "svg";
  }
  return cases;
}

std::string CaseName(const ::testing::TestParamInfo<DrawCase>& info) {
  return info.param.name;
}

std::string TypeName(const ::testing::TestParamInfo<int>& info) {
  return NameOf(info.param);
}

class AllocationFaults : public ::testing::TestWithParam<DrawCase> {};

TEST_P(AllocationFaults, Draw) {
  const Reference reference = MakeReference(GetParam());
  ASSERT_FALSE(reference.result.empty());
  ASSERT_TRUE(!GetParam().IsSvg() || reference.result != reference.earlierResult);
  DrawTrial trial(GetParam(), reference);
  TryOnBothThreads(trial, "draw");
}

INSTANTIATE_TEST_SUITE_P(Every, AllocationFaults, ::testing::ValuesIn(InBothFormats()), &CaseName);

class ColdAllocationFaults : public ::testing::TestWithParam<DrawCase> {};

// The first draw of a process.
TEST_P(ColdAllocationFaults, Draw) {
  const Reference reference = MakeReference(GetParam());
  DrawTrial trial(GetParam(), reference);
  for (const Mode& mode : kModes) {
    TryCold(trial, mode, "first draw");
  }
}

// The first call of a process.
TEST_P(ColdAllocationFaults, Create) {
  const Reference reference = MakeReference(GetParam());
  CreateTrial trial(GetParam(), reference);
  RepeatedCreateTrial repeated(GetParam(), reference);
  for (const Mode& mode : kModes) {
    TryCold(trial, mode, "first create");
    TryCold(repeated, mode, "first creates");
  }
}

std::vector<DrawCase> ColdCases() {
  std::vector<DrawCase> cases = {CaseOf(BARCODE_CODE39),     PieceCaseOf(BARCODE_JAN13),
                                 CaseOf(BARCODE_QR),         KanaCaseOf(BARCODE_DATAMATRIX),
                                 KanaCaseOf(BARCODE_PDF417), CaseOf(BARCODE_CODE39)};
  cases.back().name += "Svg";
  cases.back().format = "svg";
  return cases;
}

INSTANTIATE_TEST_SUITE_P(Some, ColdAllocationFaults, ::testing::ValuesIn(ColdCases()), &CaseName);

class AllocationFaultsOfType : public ::testing::TestWithParam<int> {
 protected:
  DrawCase drawCase = CaseOf(GetParam());
  Reference reference = MakeReference(drawCase);
};

TEST_P(AllocationFaultsOfType, Create) {
  CreateTrial trial(drawCase, reference);
  TryOnBothThreads(trial, "create");
}

INSTANTIATE_TEST_SUITE_P(Every, AllocationFaultsOfType, ::testing::Range(0, BARCODE_PDF417 + 1), &TypeName);

class AllocationFaultsOfBadText : public AllocationFaultsOfType {};

TEST_P(AllocationFaultsOfBadText, Draw) {
  RefusedDrawTrial trial(drawCase, reference);
  TryOnBothThreads(trial, "refused draw");
}

// GS1-128, the postal symbol and QR take any short text.
INSTANTIATE_TEST_SUITE_P(Every, AllocationFaultsOfBadText,
                         ::testing::Values(BARCODE_CODE39, BARCODE_CODE93, BARCODE_CODE128, BARCODE_NW7,
                                           BARCODE_MATRIX_2OF5, BARCODE_NEC_2OF5, BARCODE_JAN8, BARCODE_JAN13,
                                           BARCODE_UPC_A, BARCODE_UPC_E, BARCODE_ITF, BARCODE_GS1_DATABAR_14,
                                           BARCODE_GS1_DATABAR_LIMITED, BARCODE_GS1_DATABAR_EXPANDED,
                                           BARCODE_DATAMATRIX, BARCODE_PDF417),
                         &TypeName);

class AllocationFaultsOfFetch : public ::testing::TestWithParam<int> {};

TEST_P(AllocationFaultsOfFetch, Png) {
  const DrawCase drawCase = CaseOf(GetParam());
  const Reference reference = MakeReference(drawCase);
  PngTrial trial(drawCase, reference);
  TryOnBothThreads(trial, "get_image_data");
}

TEST_P(AllocationFaultsOfFetch, Base64) {
  const DrawCase drawCase = CaseOf(GetParam());
  const Reference reference = MakeReference(drawCase);
  Base64Trial trial(drawCase, reference);
  TryOnBothThreads(trial, "get_base64");
}

TEST_P(AllocationFaultsOfFetch, Svg) {
  DrawCase drawCase = CaseOf(GetParam());
  drawCase.format = "svg";
  const Reference reference = MakeReference(drawCase);
  SvgTrial trial(drawCase, reference);
  TryOnBothThreads(trial, "get_svg");
}

INSTANTIATE_TEST_SUITE_P(Some, AllocationFaultsOfFetch,
                         ::testing::Values(BARCODE_CODE39, BARCODE_YUBIN_CUSTOMER, BARCODE_QR,
                                           BARCODE_PDF417),
                         &TypeName);

TEST(AllocationFaultsOfSetters, EveryKeyword) {
  struct Setter {
    TextSetter set;
    const char* usual;
    int type;
  };
  const std::vector<Setter> setters = {
      {&barcode_set_output_format, "png", BARCODE_CODE39},
      {&barcode_set_output_format, "png", BARCODE_QR},
      {&barcode_set_string_encoding, "utf-8", BARCODE_PDF417},
      {&barcode_set_code_mode, "AUTO", BARCODE_CODE128},
      {&barcode_set_error_correction_level, "M", BARCODE_QR},
      {&barcode_set_encode_mode, "", BARCODE_QR},
      {&barcode_set_code_size, "", BARCODE_DATAMATRIX},
      {&barcode_set_encode_scheme, "", BARCODE_DATAMATRIX},
      {&barcode_set_symbol_type_14, "OMNIDIRECTIONAL", BARCODE_GS1_DATABAR_14},
      {&barcode_set_symbol_type_exp, "UNSTACKED", BARCODE_GS1_DATABAR_EXPANDED},
  };
  for (const Setter& setter : setters) {
    const DrawCase drawCase = CaseOf(setter.type);
    const Reference reference = MakeReference(drawCase);
    SetterTrial trial(setter.set, setter.usual, drawCase, reference);
    TryOnBothThreads(trial, std::string("setter of ") + NameOf(setter.type));
  }
}

TEST(AllocationFaultsOfEncode, DataBar14) {
  EncodeTrial trial;
  TryOnBothThreads(trial, "encode_14");
}

}  // namespace
}  // namespace barcode::test
