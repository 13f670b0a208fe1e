#include "gs1/databar_base.h"

#include "core/rect_painter.h"

namespace barcode {

bool DataBarBase::DrawRaster(std::string_view tag, int x, int y, std::uint32_t width, std::uint32_t height,
                             const MakeDrawing& makeDrawing) {
  return Reported(tag, [&] {
    if (!HasPreparedCanvas(x, y, width, height)) {
      return false;
    }
    FillBackground();
    const std::optional<DataBarDrawing> drawing = makeDrawing();
    if (!drawing) {
      return false;
    }
    RectPainter painter(*m_canvas, m_foreColor);
    for (const RectF& bar : drawing->layout.bars) {
      painter.Fill(bar);
    }
    painter.Flush();
    DrawText(drawing->displayText, x, y, drawing->textWidth, height);
    PresentCanvas();
    PrintSizeReport(width, height, drawing->layout.drawnWidth);
    return true;
  });
}

bool DataBarBase::DrawVector(std::string_view tag, int x, int y, std::uint32_t width, std::uint32_t height,
                             const MakeDrawing& makeDrawing) {
  return Reported(tag, [&] {
    const std::optional<DataBarDrawing> drawing = makeDrawing();
    if (!drawing) {
      return false;
    }
    BeginSvgDocument(width, height);
    for (const RectF& bar : drawing->layout.bars) {
      SvgRect(bar.x, bar.y, bar.width, bar.height, m_foreColor);
    }
    DrawSvgText(drawing->displayText, x, y, drawing->textWidth, height);
    EndSvg();
    return true;
  });
}

}  // namespace barcode
