#pragma once

#include <string>

namespace barcode::test {

// What a raster draw of QR and Data Matrix prints until it has its canvas. size: "100x100".
inline std::string TargetLines(const std::string& size) {
  return "[ステップ1] 描画コンテキストを準備します...\n"
         "  ターゲット: 画像ファイル用サーフェス (m_surface) の準備を開始します...\n"
         "  BarcodeBase::Draw 呼び出し完了。\n"
         "  サーフェス (サイズ " +
         size + ") を使用します。\n";
}

}  // namespace barcode::test
