#include "core/barcode_base_2d.h"

#include "base/number_format.h"
#include "core/diagnostics.h"
#include "core/rect_painter.h"
#include "text/input_encoding.h"

namespace barcode {
namespace {

// The surface is made by a draw without text.
constexpr const char* kPlaceholderText = "dummy";

std::string SurfaceReport(const SDL_Surface& surface) {
  std::string line = "  サーフェス (サイズ ";
  AppendInt(line, surface.w);
  line += 'x';
  AppendInt(line, surface.h);
  line += ") を使用します。";
  return line;
}

RectF ToRectF(const ModuleRect& rect) {
  return {static_cast<float>(rect.x), static_cast<float>(rect.y), static_cast<float>(rect.width),
          static_cast<float>(rect.height)};
}

}  // namespace

bool BarcodeBase2D::Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) {
  return DrawMatrix(ConvertInputEncoding(text, m_stringEncoding), x, y, width, height);
}

bool BarcodeBase2D::DrawMatrix(const std::string& /*text*/, int /*x*/, int /*y*/, std::uint32_t /*width*/,
                               std::uint32_t /*height*/) {
  return false;
}

bool BarcodeBase2D::DrawMatrixSquare(const std::string& text, int x, int y, std::uint32_t size) {
  return DrawMatrix(text, x, y, size, size);
}

bool BarcodeBase2D::DrawSquare(const std::string& text, int x, int y, std::uint32_t size) {
  return Draw(text, x, y, size, size);
}

std::optional<MatrixTarget> BarcodeBase2D::PrepareTarget(int x, int y, std::uint32_t width,
                                                         std::uint32_t height, Progress progress) {
  const auto report = [progress](std::string_view line, std::string_view detail = {}) {
    if (progress == Progress::kPrinted) {
      PrintLine(std::string(line).append(detail));
    }
  };
  report("[ステップ1] 描画コンテキストを準備します...");
  if (m_providedCanvas != nullptr) {
    report("  ターゲット: 提供されたウィンドウレンダラー (m_canvas) を使用します。");
    return MatrixTarget{m_providedCanvas, nullptr, x, y, width, height};
  }
  if (m_format.empty()) {
    report("エラー: 描画コンテキストが指定されていません (m_canvas も m_format も無効)。");
    return std::nullopt;
  }
  report("  ターゲット: 画像ファイル用サーフェス (m_surface) の準備を開始します...");
  if (!BarcodeBase::Draw(kPlaceholderText, x, y, width, height)) {
    report("エラー: BarcodeBase::Draw が false を返しました (サーフェス準備失敗の可能性)。");
    return std::nullopt;
  }
  report("  BarcodeBase::Draw 呼び出し完了。");
  if (m_surface == nullptr) {
    report("エラー: BarcodeBase::Draw の後で有効な描画サーフェス (m_surface) がありません。");
    return std::nullopt;
  }
  report(SurfaceReport(*m_surface));
  RendererPtr renderer(SDL_CreateSoftwareRenderer(m_surface.get()));
  if (renderer == nullptr) {
    report("エラー: サーフェス用ソフトウェアレンダラーの作成に失敗しました: ", SDL_GetError());
    return std::nullopt;
  }
  SDL_Renderer* const canvas = renderer.get();
  return MatrixTarget{canvas,
                      std::move(renderer),
                      0,
                      0,
                      static_cast<std::uint32_t>(m_surface->w),
                      static_cast<std::uint32_t>(m_surface->h)};
}

void BarcodeBase2D::FillTarget(const MatrixTarget& target) {
  if (target.owned != nullptr) {
    FillBackground();  // the rectangle is the whole surface
    return;
  }
  SDL_SetRenderDrawBlendMode(target.renderer, SDL_BLENDMODE_NONE);
  RectPainter(*target.renderer, m_backColor)
      .Fill({static_cast<float>(target.x), static_cast<float>(target.y), static_cast<float>(target.width),
             static_cast<float>(target.height)});
}

void BarcodeBase2D::PaintModules(const MatrixTarget& target, const ModuleMatrix& matrix,
                                 const ModuleSize& module, std::int32_t adjust) const {
  SDL_SetRenderDrawBlendMode(target.renderer, SDL_BLENDMODE_NONE);
  RectPainter painter(*target.renderer, m_foreColor);
  const ModuleGrid grid = RoundedGrid(module, matrix.Columns(), matrix.Rows(), target.x, target.y);
  LayoutDarkArea(matrix, grid, adjust, [&](const ModuleRect& rect) { painter.Fill(ToRectF(rect)); });
}

void BarcodeBase2D::FinishTarget(MatrixTarget& target) {
  if (target.owned == nullptr) {
    SDL_RenderPresent(target.renderer);
    return;
  }
  SDL_RenderFlush(target.renderer);
  target.owned.reset();
  target.renderer = nullptr;
}

void BarcodeBase2D::PrintModules(std::string_view header, const ModuleMatrix& matrix) {
  std::string dump(header);
  dump += '\n';
  for (int x = 0; x < matrix.Columns(); ++x) {
    for (const std::uint8_t module : matrix.Column(x)) {
      dump += module != 0 ? '1' : '0';
    }
    dump += '\n';
  }
  dump += "【Debug: 出力終了】";
  PrintLine(dump);
}

void BarcodeBase2D::WriteSvg(std::uint32_t width, std::uint32_t height, const ModuleMatrix& matrix,
                             const ModuleGrid& grid, const ModuleRule& rule) {
  BeginSvg(width, height);
  SvgRect(0, 0, width, height, m_backColor);
  LayoutModules(matrix, grid, rule, [this](const ModuleRect& rect) {
    SvgRect(rect.x, rect.y, rect.width, rect.height, m_foreColor);
  });
  EndSvg();
}

}  // namespace barcode
