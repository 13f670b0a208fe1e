// What happens when SDL fails underneath the draw of a two-dimensional symbol.
#include <gtest/gtest.h>

#include "faults/interposed.h"
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
  EXPECT_EQ(captured.err, "");
  EXPECT_TRUE(symbol.Draw("A", 0, 0, 60, 50));
}

}  // namespace
}  // namespace barcode
