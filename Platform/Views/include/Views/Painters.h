#pragma once

#include <Values/JsonValue.h>
#include <Views/LaidOutTree.h>

#include <cstdint>
#include <string>
#include <vector>

// Each reads a laid-out tree and gives the bytes of one format. `scale`: device pixels per point.
namespace platform {

/// Premultiplied ARGB, 32 bits a pixel in the machine's byte order, rows top to bottom.
struct PixelImage {
    int width = 0;
    int height = 0;
    /// Bytes from one row to the next.
    int stride = 0;
    std::vector<std::uint8_t> pixels;
};

PixelImage paintPixels(const LaidOutTree& tree, double scale);
/// Paints one rectangle of the tree, in points, again into a picture that paintPixels made at the same scale
/// of a tree of the same size.
void repaintPixels(PixelImage& image, const LaidOutTree& tree, double scale, Rect changed);
std::string paintPng(const LaidOutTree& tree, double scale);
/// Texts become outlines; one user unit is one point.
std::string paintSvg(const LaidOutTree& tree);
std::string paintPdf(const LaidOutTree& tree);

/// {"family", "width", "height", "tree", "links"}.
JsonValue treeJson(const LaidOutTree& tree);
/// The drawn texts, a line each.
std::string treeText(const LaidOutTree& tree);

}  // namespace platform
