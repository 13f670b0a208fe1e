// barcode_label.hpp as a host uses it.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <latch>
#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "barcode_label.hpp"
#include "support/scratch_folder.h"

namespace barcode::test {
namespace {

using libbarcode::Bytes;
using libbarcode::Label;
using libbarcode::LabelError;
using libbarcode::LabelRequest;
using nlohmann::json;

constexpr std::string_view kQr = R"({"type": "qr", "text": "hello"})";

static_assert(std::is_nothrow_move_constructible_v<Label> && std::is_nothrow_move_assignable_v<Label>);
static_assert(std::is_nothrow_swappable_v<Label> && std::is_nothrow_destructible_v<Label>);
static_assert(!std::is_copy_constructible_v<Label> && !std::is_copy_assignable_v<Label>);
// An exception that throws while it is copied ends the program.
static_assert(std::is_nothrow_copy_constructible_v<LabelError> &&
              std::is_nothrow_copy_assignable_v<LabelError>);
static_assert(std::is_nothrow_move_constructible_v<LabelError>);
static_assert(noexcept(std::declval<const Label&>().data()) && noexcept(std::declval<const Label&>().ok()));
static_assert(
    noexcept(std::declval<const Label&>().report()) && noexcept(std::declval<const Label&>().media_type()));
static_assert(noexcept(std::declval<Label&>().release()) && noexcept(Label::try_make(kQr)));
static_assert(!std::is_convertible_v<const char*, Label> && !std::is_convertible_v<std::string, Label>);

// What barcode_label_make gives for the same request.
std::string MadeInC(std::string_view request) {
  BarcodeLabel* const label = barcode_label_make(request.data(), request.size());
  std::size_t length = 0;
  const unsigned char* const data = barcode_label_data(label, &length);
  std::string bytes(reinterpret_cast<const char*>(data), length);
  barcode_label_free(label);
  return bytes;
}

std::string FileContent(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// "code of field: message" of what is thrown.
std::string Refusal(const LabelRequest& request) {
  try {
    const Label label(request);
    return "delivered";
  } catch (const LabelError& error) {
    return error.code() + " of " + error.field() + ": " + error.what();
  }
}

TEST(CppLabel, IsWhatTheFunctionsMake) {
  for (const char* const format : {"png", "svg", "pdf"}) {
    LabelRequest request("jan13", "490123456789");
    request.set("format", format);
    const Label label(request);
    EXPECT_TRUE(label.ok());
    EXPECT_TRUE(static_cast<bool>(label));
    EXPECT_GT(label.data().size(), 100U);
    EXPECT_TRUE(label.data().chars() == MadeInC(request.json())) << format;
    EXPECT_EQ(json::parse(label.report())["format"], format);
  }
  EXPECT_EQ(Label(kQr).media_type(), "image/png");
  EXPECT_TRUE(Label(kQr).data().chars().substr(0, 8) == "\x89PNG\r\n\x1A\n");
}

TEST(CppLabel, BytesAreARange) {
  const Label label(kQr);
  const Bytes bytes = label.data();
  const std::span<const unsigned char> span = bytes;
  EXPECT_EQ(span.data(), bytes.data());
  EXPECT_EQ(span.size(), bytes.size());
  EXPECT_EQ(std::as_bytes(std::span<const unsigned char>(label.data())).size(), bytes.size());
  const std::vector<unsigned char> copy(bytes.begin(), bytes.end());
  EXPECT_EQ(copy.size(), bytes.size());
  EXPECT_TRUE(Bytes(nullptr, 5).empty());
  EXPECT_EQ(Bytes().begin(), Bytes().end());
  EXPECT_EQ(Bytes().chars(), "");
}

TEST(CppLabel, TellsWhyItIsRefused) {
  try {
    const Label label(LabelRequest("jan13", "49012345678x"));
    FAIL() << "delivered";
  } catch (const std::invalid_argument& error) {
    const auto* const refusal = dynamic_cast<const LabelError*>(&error);
    ASSERT_NE(refusal, nullptr);
    EXPECT_EQ(refusal->code(), "bad_text");
    EXPECT_EQ(refusal->field(), "text");
    EXPECT_STREQ(refusal->what(),
                 R"(JAN-13 takes the digits 0 to 9; replace the character "x" at position 12.)");
    // The copy of an error keeps its texts when the first is gone.
    auto first = std::make_unique<LabelError>(*refusal);
    // NOLINTNEXTLINE(performance-move-const-arg): it is a copy, and the first keeps its texts.
    const LabelError moved = std::move(*first);
    EXPECT_EQ(first->code(), "bad_text");
    first.reset();
    EXPECT_EQ(moved.code(), "bad_text");
  }
}

TEST(CppLabel, WithoutExceptions) {
  const Label made = Label::try_make(kQr);
  EXPECT_TRUE(made.ok());
  EXPECT_EQ(made.error().code(), "");
  EXPECT_STREQ(made.error().what(), "");

  const Label refused = Label::try_make(LabelRequest("qr", "A").set("module", 1000));
  EXPECT_FALSE(refused.ok());
  EXPECT_EQ(refused.error().code(), "bad_value");
  EXPECT_EQ(refused.error().field(), "module");
  EXPECT_TRUE(refused.data().empty());
  EXPECT_EQ(refused.data().data(), nullptr);
  EXPECT_EQ(refused.media_type(), "");
  EXPECT_THROW(refused.save("never.png"), LabelError);
  EXPECT_FALSE(std::filesystem::exists("never.png"));
}

TEST(CppLabel, Warns) {
  const Label label(LabelRequest("qr", "A").set("quiet_zone", 0).set("foreground", "#ccc"));
  const json warnings = json::parse(label.report())["warnings"];
  ASSERT_EQ(warnings.size(), 2U);
  const std::vector<libbarcode::LabelWarning> list = label.warnings();
  ASSERT_EQ(list.size(), 2U);
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(list[i].code, warnings[i]["code"]);
    EXPECT_EQ(list[i].message, warnings[i]["message"]);
  }
  EXPECT_TRUE(Label(kQr).warnings().empty());
  EXPECT_TRUE(Label().warnings().empty());
}

TEST(CppLabel, Moves) {
  Label first(kQr);
  const Bytes bytes = first.data();
  Label second = std::move(first);
  EXPECT_EQ(second.data().data(), bytes.data());
  // NOLINTBEGIN(bugprone-use-after-move): what an empty one says is promised.
  EXPECT_FALSE(first.ok());
  EXPECT_TRUE(first.data().empty());
  EXPECT_EQ(first.report(), "");
  EXPECT_EQ(first.media_type(), "");
  EXPECT_EQ(first.error().code(), "");
  EXPECT_EQ(first.get(), nullptr);
  EXPECT_THROW(first.save("never.png"), std::logic_error);
  swap(first, second);
  EXPECT_TRUE(first.ok());
  EXPECT_FALSE(second.ok());
  second = std::move(first);
  second = Label(LabelRequest("code39", "A"));
  EXPECT_EQ(json::parse(second.report())["type"], "code39");
  // NOLINTEND(bugprone-use-after-move)

  std::vector<Label> many;
  many.reserve(3);
  for (int i = 0; i < 20; ++i) {
    many.emplace_back(LabelRequest("code39", std::to_string(i)));
  }
  EXPECT_EQ(json::parse(many[7].report())["text"], "7");
}

TEST(CppLabel, GivesItsLabelAway) {
  Label label(kQr);
  BarcodeLabel* const raw = label.release();
  EXPECT_EQ(barcode_label_ok(raw), 1);
  EXPECT_FALSE(label.ok());
  EXPECT_EQ(label.release(), nullptr);
  const Label again = Label::adopt(raw);
  EXPECT_EQ(again.get(), raw);
  EXPECT_FALSE(Label::adopt(nullptr).ok());
}

TEST(CppLabel, SavesWhatItHolds) {
  const ScratchFolder folder;
  const std::string path = folder.File("label.png");
  const Label label(kQr);
  label.save(path);
  EXPECT_TRUE(FileContent(path) == label.data().chars());
  try {
    label.save(folder.File("no folder/label.png"));
    FAIL() << "written";
  } catch (const std::system_error& error) {
    EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
  }
  EXPECT_THROW(label.save(std::string("label\0.png", 10)), std::system_error);
  EXPECT_THROW(label.save(""), std::system_error);
  EXPECT_THROW(libbarcode::save(Bytes(), path), std::invalid_argument);
  EXPECT_TRUE(FileContent(path) == label.data().chars());
  if (std::filesystem::exists("/dev/full")) {
    try {
      label.save("/dev/full");
      FAIL() << "written";
    } catch (const std::system_error& error) {
      EXPECT_EQ(error.code(), std::errc::no_space_on_device);
    }
  }
}

TEST(CppLabel, TellsTypesAndVersion) {
  EXPECT_EQ(json::parse(libbarcode::label_types()).size(), 19U);
  EXPECT_EQ(libbarcode::label_version(), BARCODE_LABEL_VERSION_STRING);
}

TEST(CppLabel, RefusesHostileTexts) {
  EXPECT_EQ(Refusal(LabelRequest(nullptr, "A")).substr(0, 17), "bad_value of type");
  EXPECT_EQ(Refusal(LabelRequest("qr", nullptr)).substr(0, 17), "bad_value of text");
  EXPECT_EQ(Refusal(LabelRequest("qr", "A").set(nullptr, 1)).substr(0, 16), "unknown_field of");
  // A lone surrogate, written as UTF-8 would, and half a character.
  for (const char* const text : {"a\xED\xA0\x80", "\xC3", "\xFF"}) {
    EXPECT_EQ(Refusal(LabelRequest("qr", text)).substr(0, 14), "bad_request of") << text;
    EXPECT_EQ(Refusal(LabelRequest("qr", "A").set(text, "B")).substr(0, 14), "bad_request of") << text;
  }
  EXPECT_EQ(
      Refusal(LabelRequest("code39", std::string_view("A\0B", 3))),
      "bad_text of text: Code 39 takes letters, digits, the space and - . $ / + %; replace the character "
      "U+0000 at position 2.");
  EXPECT_EQ(json::parse(Label(LabelRequest("qr", std::string("A\0B", 3))).report())["text"],
            std::string("A\0B", 3));
  EXPECT_THROW(Label(static_cast<const char*>(nullptr)), LabelError);
  EXPECT_THROW(Label(nullptr), LabelError);
  EXPECT_THROW(Label(""), LabelError);
  EXPECT_THROW(Label("[]"), LabelError);
  EXPECT_THROW(Label(std::string(100'000, '[')), LabelError);
}

TEST(CppLabel, RefusesAHundredMegabytes) {
  std::string text;
  text.resize(100'000'000, 'A');
  EXPECT_EQ(Refusal(LabelRequest("qr", text)),
            "too_long of text: No label takes more than 10000 bytes of text; shorten it.");
  EXPECT_EQ(Refusal(LabelRequest::of_bytes("qr", text.data(), text.size())).substr(0, 8), "too_long");
}

// The thread sanitizer has threads of its own for the library; these are the header's.
TEST(CppLabel, IsMadeAndReadByManyThreads) {
  constexpr int kThreads = 64;
  const Label shared(kQr);
  const std::string usual(shared.data().chars());
  std::latch start(kThreads);
  std::vector<int> failures(kThreads);
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int& failure : failures) {
    threads.emplace_back([&] {
      start.arrive_and_wait();
      for (int i = 0; i < 20; ++i) {
        failure += Label(kQr).data().chars() == usual ? 0 : 1;
        failure += shared.data().chars() == usual && shared.error().code().empty() ? 0 : 1;
        failure += Refusal(LabelRequest("jan13", "x")).starts_with("bad_text of text: ") ? 0 : 1;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(failures, std::vector(kThreads, 0));
}

}  // namespace
}  // namespace barcode::test
