#include "layout/matrix_layout.h"

#include <algorithm>
#include <cmath>

namespace barcode {
namespace {

// edge(i) for i = 0 .. count.
template <class Edge>
std::vector<double> Edges(int count, Edge edge) {
  std::vector<double> edges(static_cast<std::size_t>(count) + 1);
  for (std::size_t i = 0; i < edges.size(); ++i) {
    edges[i] = edge(static_cast<double>(i));
  }
  return edges;
}

std::vector<double> RoundedEdges(double module, int count, int origin) {
  return Edges(count, [=](double i) { return origin + std::round(i * module); });
}

}  // namespace

ModuleSize StretchedModules(std::uint32_t width, std::uint32_t height, int columns, int rows, bool fitWidth) {
  if (columns <= 0 || rows <= 0) {
    return {};
  }
  if (fitWidth) {
    return {static_cast<double>(width) / columns, static_cast<double>(height) / rows};
  }
  return {static_cast<double>(std::max(1U, width / static_cast<std::uint32_t>(columns))),
          static_cast<double>(std::max(1U, height / static_cast<std::uint32_t>(rows)))};
}

ModuleSize SquareModules(std::uint32_t width, std::uint32_t height, int columns, int rows, bool fitWidth) {
  if (columns <= 0 || rows <= 0) {
    return {};
  }
  const double size = fitWidth
                          ? std::min(static_cast<double>(height) / rows, static_cast<double>(width) / columns)
                          : static_cast<double>(std::min(height / static_cast<std::uint32_t>(rows),
                                                         width / static_cast<std::uint32_t>(columns)));
  return {size, size};
}

ModuleGrid RoundedGrid(const ModuleSize& module, int columns, int rows, int x, int y) {
  return {RoundedEdges(module.width, columns, x), RoundedEdges(module.height, rows, y)};
}

ModuleGrid ExactGrid(const ModuleSize& module, int columns, int rows) {
  return {Edges(columns, [&](double i) { return i * module.width; }),
          Edges(rows, [&](double j) { return j * module.height; })};
}

ModuleGrid DividedGrid(double width, double height, int columns, int rows) {
  return {Edges(columns, [=](double i) { return i * width / columns; }),
          Edges(rows, [=](double j) { return j * height / rows; })};
}

MatrixDrawing LayoutStretched(const ModuleMatrix& matrix, std::uint32_t width, std::uint32_t height,
                              bool fitWidth, PixelGrid grid, const ModuleRule& rule) {
  const int columns = matrix.Columns();
  const int rows = matrix.Rows();
  const ModuleSize module = StretchedModules(width, height, columns, rows, fitWidth);
  return {.width = width,
          .height = height,
          .module = module,
          .grid = grid == PixelGrid::kWhole ? RoundedGrid(module, columns, rows, 0, 0)
                                            : ExactGrid(module, columns, rows),
          .rule = rule};
}

}  // namespace barcode
