#include "assets/AppIcon.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QString>
#include <array>
#include <cstdio>
#include <string>

#include "app/AtomicFile.h"

namespace zw {
namespace {

namespace fs = std::filesystem;

constexpr double kCanvas = 256;

// A receipt sheet with its blue head, three written lines, the amount box and a red stamp. Coordinates on a 256
// unit square; an empty fill or stroke colour draws none.
struct Shape
{
    enum class Kind { Box, Ring } kind;
    double x, y, width, height, radius;
    const char* fill;
    const char* stroke;
    double strokeWidth;
};

constexpr std::array kShapes = {
    Shape{Shape::Kind::Box, 48, 22, 168, 224, 14, "#5c5446", "", 0}, // shadow
    Shape{Shape::Kind::Box, 40, 12, 168, 224, 14, "#fdfbf3", "#8a7f66", 6},
    Shape{Shape::Kind::Box, 52, 24, 144, 40, 8, "#2f6db5", "", 0},
    Shape{Shape::Kind::Box, 64, 86, 120, 14, 4, "#8f99a4", "", 0},
    Shape{Shape::Kind::Box, 64, 116, 120, 14, 4, "#8f99a4", "", 0},
    Shape{Shape::Kind::Box, 64, 146, 76, 14, 4, "#8f99a4", "", 0},
    Shape{Shape::Kind::Box, 64, 180, 64, 34, 4, "", "#2f6db5", 6},
    Shape{Shape::Kind::Ring, 138, 166, 56, 56, 28, "", "#c8372d", 9},
};

constexpr std::array kPixelSizes = {16, 22, 24, 32, 48, 64, 128, 256};

std::string number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

std::string svgAttributes(const Shape& shape)
{
    std::string attributes = " fill=\"" + std::string(*shape.fill ? shape.fill : "none") + "\"";
    if (*shape.stroke)
        attributes += " stroke=\"" + std::string(shape.stroke) + "\" stroke-width=\"" + number(shape.strokeWidth) + "\"";
    return attributes;
}

std::string svgIcon()
{
    std::string svg = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"256\" height=\"256\" viewBox=\"0 0 256 256\">\n";
    for (const Shape& shape : kShapes) {
        if (shape.kind == Shape::Kind::Ring) {
            svg += "  <circle cx=\"" + number(shape.x + shape.width / 2) + "\" cy=\"" + number(shape.y + shape.height / 2) +
                   "\" r=\"" + number(shape.radius) + "\"" + svgAttributes(shape) + "/>\n";
        } else {
            svg += "  <rect x=\"" + number(shape.x) + "\" y=\"" + number(shape.y) + "\" width=\"" + number(shape.width) +
                   "\" height=\"" + number(shape.height) + "\" rx=\"" + number(shape.radius) + "\"" +
                   svgAttributes(shape) + "/>\n";
        }
    }
    return svg + "</svg>\n";
}

QImage pixelIcon(int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / kCanvas, size / kCanvas);
    for (const Shape& shape : kShapes) {
        painter.setBrush(*shape.fill ? QBrush(QColor(shape.fill)) : QBrush(Qt::NoBrush));
        painter.setPen(*shape.stroke ? QPen(QColor(shape.stroke), shape.strokeWidth) : QPen(Qt::NoPen));
        const QRectF area(shape.x, shape.y, shape.width, shape.height);
        if (shape.kind == Shape::Kind::Ring)
            painter.drawEllipse(area);
        else
            painter.drawRoundedRect(area, shape.radius, shape.radius);
    }
    painter.end();
    return image;
}

} // namespace

bool generateIcons(const fs::path& folder)
{
    std::error_code error;
    fs::create_directories(folder / "scalable" / "apps", error);
    if (error)
        return false;
    bool ok = true;
    try {
        writeFileAtomically(folder / "scalable" / "apps" / "zettelwerk.svg", svgIcon());
    } catch (const std::exception&) {
        ok = false;
    }
    for (int size : kPixelSizes) {
        const fs::path apps = folder / (std::to_string(size) + "x" + std::to_string(size)) / "apps";
        fs::create_directories(apps, error);
        ok &= !error && pixelIcon(size).save(QString::fromStdString((apps / "zettelwerk.png").string()), "PNG");
    }
    return ok;
}

} // namespace zw
