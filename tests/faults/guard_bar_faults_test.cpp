// The extended layout of EAN and UPC symbols, and the postal symbol, when SDL or the font library fails.
#include <gtest/gtest.h>

#include <memory>

#include "core/font.h"
#include "faults/interposed.h"
#include "linear/jan13.h"
#include "linear/jan8.h"
#include "linear/yubin_customer.h"
#include "support/capture.h"
#include "support/image.h"

namespace barcode {
namespace {

using test::CaptureInternal;
using test::Failing;
using test::Fault;

TEST(GuardBarFaults, NoFontOfTheSizeAskedLeavesTheDigitsOut) {
  Jan13 symbol("png");
  const auto captured = CaptureInternal([&] {
    const Failing failing(Fault::OpenFont);
    EXPECT_TRUE(symbol.Draw("490123456789", 0, 0, 300, 100));
  });
  EXPECT_EQ(captured.err,
            "OpenEmbeddedRobotoFont: TTF_OpenFontRW failed: injected\n"
            "TTF_OpenFont error: injected\n");
  const test::Image image = test::DecodePng(symbol.GetImageData());
  EXPECT_EQ(image.At(19, 79), test::kBlackPixel);
  EXPECT_TRUE(test::InkedRows(image, 80).empty());
}

TEST(GuardBarFaults, WithoutTheSharedFontTheDigitsAreLeftOut) {
  ASSERT_FALSE(IsTextRenderingReady()) << "run this test in a process of its own, as ctest does";
  std::unique_ptr<Jan8> symbol;
  (void)CaptureInternal([&] {
    const Failing failing(Fault::TtfInit);
    symbol = std::make_unique<Jan8>("png");
  });
  const auto captured = CaptureInternal([&] { EXPECT_TRUE(symbol->Draw("4901234", 0, 0, 300, 100)); });
  EXPECT_EQ(captured.err, "");
  const test::Image image = test::DecodePng(symbol->GetImageData());
  EXPECT_EQ(image.At(0, 79), test::kBlackPixel);  // the digits' room stays reserved
  EXPECT_TRUE(test::InkedRows(image, 80).empty());
}

TEST(GuardBarFaults, EveryDigitThatCannotBeRenderedIsReported) {
  Jan8 symbol("png");
  symbol.SetTextEvenSpacing(false);
  const auto captured = CaptureInternal([&] {
    const Failing failing(Fault::RenderText);
    EXPECT_TRUE(symbol.Draw("4901234", 0, 0, 300, 100));
  });
  EXPECT_EQ(captured.err,
            "TTF_RenderUTF8_Blended error: injected\n"
            "TTF_RenderUTF8_Blended error: injected\n");
}

TEST(GuardBarFaults, NoCanvasComesBeforeAnyOtherRefusal) {
  Jan13 symbol("png");
  for (const auto& [fault, line] : {std::pair{Fault::CreateSurface, "サーフェス作成に失敗: injected\n"},
                                    std::pair{Fault::CreateRenderer, "レンダラー作成に失敗: injected\n"}}) {
    const auto captured = CaptureInternal([&, fault = fault] {
      const Failing failing(fault);
      EXPECT_FALSE(symbol.Draw("bad", 0, 0, 300, 100));
    });
    EXPECT_EQ(captured.err, line);
    EXPECT_EQ(captured.out, "");
  }
}

TEST(YubinCustomerFaults, NoCanvas) {
  YubinCustomer symbol("png");
  const auto captured = CaptureInternal([&] {
    const Failing failing(Fault::CreateRenderer);
    EXPECT_FALSE(symbol.DrawPostal("1234567", 0, 0, 40));
  });
  EXPECT_EQ(captured.err, "レンダラー作成に失敗: injected\n");
  EXPECT_EQ(captured.out, "");
}

}  // namespace
}  // namespace barcode
