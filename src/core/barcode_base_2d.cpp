#include "core/barcode_base_2d.h"

#include <stdexcept>
#include <utility>

#include "core/rect_painter.h"
#include "core/sdl_error.h"
#include "text/input_encoding.h"

namespace barcode {
namespace {

// The canvas is made by a draw without text.
constexpr const char* kPlaceholderText = "dummy";

RectF ToRectF(const ModuleRect& rect) {
  return {static_cast<float>(rect.x), static_cast<float>(rect.y), static_cast<float>(rect.width),
          static_cast<float>(rect.height)};
}

}  // namespace

bool BarcodeBase2D::Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) {
  return Reported(m_style.tag, [&] {
    return DrawMatrix(ConvertInputEncoding(text, m_stringEncoding), x, y, width, height);
  });
}

bool BarcodeBase2D::DrawMatrix(const std::string& text, int x, int y, std::uint32_t width,
                               std::uint32_t height) {
  const Box box{x, y, width, height};
  return Reported(m_style.tag, [&] { return IsSvgOutput() ? DrawVector(text, box) : DrawRaster(text, box); });
}

bool BarcodeBase2D::DrawMatrixSquare(const std::string& text, int x, int y, std::uint32_t size) {
  return DrawMatrix(text, x, y, size, size);
}

bool BarcodeBase2D::DrawSquare(const std::string& text, int x, int y, std::uint32_t size) {
  return Draw(text, x, y, size, size);
}

Box BarcodeBase2D::DrawnBox(const ModuleMatrix& /*matrix*/, const Box& box) const {
  return box;
}

void BarcodeBase2D::ReportSymbol(const ModuleMatrix& /*matrix*/, const MatrixDrawing& /*drawing*/) const {}

ModuleMatrix BarcodeBase2D::EncodeAndPrint(const std::string& text) const {
  EncoderLines lines;
  const auto print = [&lines] {
    if (!lines.Empty()) {
      Print(lines.Text());
    }
  };
  try {
    ModuleMatrix matrix = Encode(text, lines);
    print();
    return matrix;
  } catch (...) {
    print();
    throw;
  }
}

bool BarcodeBase2D::DrawRaster(const std::string& text, const Box& box) {
  ModuleMatrix matrix;
  if (m_style.encodesFirst) {
    matrix = EncodeAndPrint(text);
  }
  const RendererPtr target = PrepareTarget(DrawnBox(matrix, box));
  if (target == nullptr) {
    return false;
  }
  if (!m_style.encodesFirst) {
    matrix = EncodeAndPrint(text);
  }
  // The canvas may be that of an earlier draw.
  const SDL_Surface& surface = *m_canvas.Surface();
  const MatrixDrawing drawing = Layout(matrix, static_cast<std::uint32_t>(surface.w),
                                       static_cast<std::uint32_t>(surface.h), PixelGrid::kWhole);
  ReportSymbol(matrix, drawing);
  m_canvas.Fill(m_backColor);
  if (m_canvas.IsVisible()) {
    Paint(*target, matrix, drawing);
  }
  if (!m_style.doneLine.empty()) {
    PrintLine(m_style.doneLine);
  }
  return true;
}

RendererPtr BarcodeBase2D::PrepareTarget(const Box& box) {
  const auto report = [this](const auto&... pieces) {
    if (m_style.printsSteps) {
      PrintLine(pieces...);
    }
  };
  report("[ステップ1] 描画コンテキストを準備します...");
  if (m_format.empty()) {
    report("エラー: 描画コンテキストが指定されていません (m_canvas も m_format も無効)。");
    return nullptr;
  }
  report("  ターゲット: 画像ファイル用サーフェス (m_surface) の準備を開始します...");
  if (!BarcodeBase::Draw(kPlaceholderText, box.x, box.y, box.width, box.height)) {
    report("エラー: BarcodeBase::Draw が false を返しました (サーフェス準備失敗の可能性)。");
    return nullptr;
  }
  report("  BarcodeBase::Draw 呼び出し完了。");
  SDL_Surface* const surface = m_canvas.Surface();
  if (surface == nullptr) {
    report("エラー: BarcodeBase::Draw の後で有効な描画サーフェス (m_surface) がありません。");
    return nullptr;
  }
  report("  サーフェス (サイズ ", surface->w, 'x', surface->h, ") を使用します。");
  RendererPtr renderer(SDL_CreateSoftwareRenderer(surface));
  if (renderer == nullptr) {
    ErrorLine("レンダラー作成に失敗: ", SdlError());
    report("エラー: サーフェス用ソフトウェアレンダラーの作成に失敗しました: ", SdlError());
  }
  return renderer;
}

void BarcodeBase2D::Paint(SDL_Renderer& target, const ModuleMatrix& matrix, const MatrixDrawing& drawing) {
  RectPainter painter(target, m_foreColor);
  LayoutDarkArea(matrix, drawing.grid, drawing.rule.adjust,
                 [&](const ModuleRect& rect) { painter.Fill(ToRectF(rect)); });
  painter.Flush();
  if (SDL_RenderFlush(&target) != 0) {
    throw std::runtime_error(Line("SDL_RenderFlush error: ", SdlError()));
  }
}

// The earlier document stays until the new one is whole.
bool BarcodeBase2D::DrawVector(const std::string& text, const Box& box) {
  const ModuleMatrix matrix = EncodeAndPrint(text);
  if (matrix.Empty()) {
    return false;
  }
  const Box drawn = DrawnBox(matrix, box);
  const MatrixDrawing drawing = Layout(matrix, drawn.width, drawn.height, PixelGrid::kFractional);
  SvgWriter document;
  document.BeginSvg(drawing.width, drawing.height);
  document.Reserve(matrix.CountDark() + 2);
  document.SvgRect(0, 0, drawing.width, drawing.height, m_backColor);
  LayoutModules(matrix, drawing.grid, drawing.rule, [&](const ModuleRect& rect) {
    document.SvgRect(rect.x, rect.y, rect.width, rect.height, m_foreColor);
  });
  document.EndSvg();
  m_svgStream = std::move(document);
  return true;
}

void BarcodeBase2D::PrintModules(std::string_view header, const ModuleMatrix& matrix) {
  std::string dump = Line(header, '\n');
  for (int x = 0; x < matrix.Columns(); ++x) {
    for (const std::uint8_t module : matrix.Column(x)) {
      dump += module != 0 ? '1' : '0';
    }
    dump += '\n';
  }
  PrintLine(dump, "【Debug: 出力終了】");
}

}  // namespace barcode
