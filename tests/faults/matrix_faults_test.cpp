// What happens when SDL, the converter of character sets or the allocator fails underneath the draw of a
// two-dimensional symbol.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "datamatrix/datamatrix.h"
#include "faults/interposed.h"
#include "pdf417/pdf417.h"
#include "qr/qr.h"
#include "support/capture.h"

namespace barcode {
namespace {

using test::Captured;
using test::CaptureInternal;
using test::Failing;
using test::Fault;

const std::string kStart =
    "[ステップ1] 描画コンテキストを準備します...\n"
    "  ターゲット: 画像ファイル用サーフェス (m_surface) の準備を開始します...\n";

Captured FailedDraw(QR& symbol, Fault fault, int spared = 0) {
  return CaptureInternal([&] {
    const Failing failing(fault, spared);
    EXPECT_FALSE(symbol.Draw("A", 0, 0, 60, 50));
  });
}

TEST(MatrixFaults, NoSurface) {
  QR symbol("png");
  const Captured captured = FailedDraw(symbol, Fault::CreateSurface);
  EXPECT_EQ(captured.out,
            kStart + "エラー: BarcodeBase::Draw が false を返しました (サーフェス準備失敗の可能性)。\n");
  EXPECT_EQ(captured.err, "サーフェス作成に失敗: injected\n");
  EXPECT_TRUE(symbol.GetImageData().empty());
}

TEST(MatrixFaults, NoRendererForTheDraw) {
  QR symbol("png");
  // The canvas's own renderer is made first.
  const Captured captured = FailedDraw(symbol, Fault::CreateRenderer, 1);
  EXPECT_EQ(captured.out, kStart +
                              "  BarcodeBase::Draw 呼び出し完了。\n"
                              "  サーフェス (サイズ 60x50) を使用します。\n"
                              "エラー: サーフェス用ソフトウェアレンダラーの作成に失敗しました: injected\n");
  EXPECT_EQ(captured.err, "レンダラー作成に失敗: injected\n");
  EXPECT_TRUE(symbol.Draw("A", 0, 0, 60, 50));
}

// The document breaks off in its middle; what the host reads is the one before.
TEST(MatrixFaults, NoMemoryForTheSvgDocument) {
  QR symbol("svg");
  ASSERT_TRUE(symbol.Draw("A", 0, 0, 60, 50));
  const std::string document = symbol.GetSvgDocument();
  symbol.SetVersion(40);
  const Captured captured = FailedDraw(symbol, Fault::LargeAllocation);
  EXPECT_EQ(captured.out, "");
  EXPECT_EQ(captured.err, "[QR] std::bad_alloc\n");
  EXPECT_EQ(symbol.GetSvgDocument(), document);
  EXPECT_TRUE(symbol.Draw("A", 0, 0, 60, 50));
  EXPECT_GT(symbol.GetSvgDocument().size(), 1'000'000U);
}

// The converter comes before everything else: canvas and document stay.
template <class Symbol>
void ExpectRefusalWithoutConverter(const std::string& tag) {
  const std::string sjis = "\x82\xA0";
  Symbol symbol("svg");
  std::vector<std::uint8_t> picture;
  (void)CaptureInternal([&] {
    EXPECT_TRUE(symbol.Draw("A", 0, 0, 90, 50));
    symbol.SetOutputFormat("png");
    EXPECT_TRUE(symbol.Draw("A", 0, 0, 90, 50));
    picture = symbol.GetImageData();
  });
  const std::string document = symbol.GetSvgDocument();
  const auto draw = [&](const std::string& text, bool drawn) {
    return CaptureInternal([&] {
      const Failing failing(Fault::OpenConverter);
      EXPECT_EQ(symbol.Draw(text, 0, 0, 60, 60), drawn);
    });
  };
  for (const char* const format : {"png", "svg"}) {
    symbol.SetOutputFormat(format);
    const Captured captured = draw(sjis, false);
    EXPECT_EQ(captured.err,
              tag + "Character set conversion is not available: cannot read Shift-JIS (CP932).\n");
    EXPECT_EQ(captured.out, "");
  }
  symbol.SetStringEncoding("shift-jis");
  EXPECT_EQ(draw("\xE3\x81\x82", false).err,
            tag + "Character set conversion is not available: cannot write Shift-JIS (CP932).\n");
  EXPECT_EQ(symbol.GetSvgDocument(), document);
  (void)CaptureInternal([&] { EXPECT_EQ(symbol.GetImageData(), picture); });

  // Text in the character set of the symbol needs no converter.
  EXPECT_EQ(draw(sjis, true).err, "");
  EXPECT_NE(symbol.GetSvgDocument(), document);
}

TEST(MatrixFaults, NoConverterForQr) {
  ExpectRefusalWithoutConverter<QR>("[QR] ");
}

TEST(MatrixFaults, NoConverterForDataMatrix) {
  ExpectRefusalWithoutConverter<DataMatrix>("[DataMatrix] ");
}

TEST(MatrixFaults, NoConverterForPdf417) {
  ExpectRefusalWithoutConverter<PDF417>("[PDF417] ");
}

}  // namespace
}  // namespace barcode
