#include "ui/frame/RtfBridge.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFragment>
#include <QTextImageFormat>
#include <QUrl>
#include <QVariant>
#include <algorithm>
#include <cmath>

#include "export/PngEncoder.h"
#include "export/RtfExport.h"

namespace zw {
namespace {

constexpr const char* kPictureCounter = "zwPictureCount";
// No picture is laid out wider or higher than this on a page, whatever a file claims (22 inches).
constexpr int kLargestGoalTwips = 31680;

QString pictureName(QTextDocument& document)
{
    const int number = document.property(kPictureCounter).toInt() + 1;
    document.setProperty(kPictureCounter, number);
    return QStringLiteral("zw-picture:%1").arg(number);
}

QImage imageResource(const QTextDocument& document, const QString& name)
{
    const QVariant resource = document.resource(QTextDocument::ImageResource, QUrl(name));
    if (resource.canConvert<QImage>())
        return resource.value<QImage>();
    if (resource.canConvert<QByteArray>())
        return QImage::fromData(resource.toByteArray());
    return {};
}

rtf::Alignment alignmentOf(Qt::Alignment alignment)
{
    if (alignment & Qt::AlignHCenter)
        return rtf::Alignment::Centre;
    if (alignment & Qt::AlignRight)
        return rtf::Alignment::Right;
    if (alignment & Qt::AlignJustify)
        return rtf::Alignment::Justified;
    return rtf::Alignment::Left;
}

Qt::Alignment alignmentOf(rtf::Alignment alignment)
{
    switch (alignment) {
    case rtf::Alignment::Centre:
        return Qt::AlignHCenter;
    case rtf::Alignment::Right:
        return Qt::AlignRight;
    case rtf::Alignment::Justified:
        return Qt::AlignJustify;
    case rtf::Alignment::Left:
        break;
    }
    return Qt::AlignLeft;
}

QTextCharFormat charFormatOf(const rtf::CharFormat& run, const rtf::Document& document)
{
    QTextCharFormat format;
    format.setFontWeight(run.bold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(run.italic);
    format.setFontUnderline(run.underline);
    format.setFontStrikeOut(run.strikethrough);
    if (run.halfPoints > 0)
        format.setFontPointSize(std::min(run.halfPoints, 3276) / 2.0);
    if (run.font >= 0 && static_cast<std::size_t>(run.font) < document.fonts.size())
        format.setFontFamilies({QString::fromStdString(document.fonts[static_cast<std::size_t>(run.font)].name)});
    if (run.colour > 0 && static_cast<std::size_t>(run.colour) <= document.colours.size()) {
        const auto& colour = document.colours[static_cast<std::size_t>(run.colour) - 1];
        format.setForeground(QColor(std::clamp(colour.red, 0, 255), std::clamp(colour.green, 0, 255),
                                    std::clamp(colour.blue, 0, 255)));
    }
    return format;
}

// Collects the font and colour tables while the runs are read.
class Tables
{
public:
    explicit Tables(rtf::Document& document) : m_document(document) {}

    int font(const std::string& name)
    {
        for (std::size_t i = 0; i < m_document.fonts.size(); ++i) {
            if (m_document.fonts[i].name == name)
                return static_cast<int>(i);
        }
        m_document.fonts.push_back({name});
        return static_cast<int>(m_document.fonts.size() - 1);
    }

    int colour(const QColor& colour)
    {
        const rtf::Colour wanted{colour.red(), colour.green(), colour.blue()};
        for (std::size_t i = 0; i < m_document.colours.size(); ++i) {
            if (m_document.colours[i] == wanted)
                return static_cast<int>(i + 1);
        }
        m_document.colours.push_back(wanted);
        return static_cast<int>(m_document.colours.size());
    }

private:
    rtf::Document& m_document;
};

rtf::CharFormat runFormatOf(const QTextCharFormat& format, const QFont& base, Tables& tables)
{
    rtf::CharFormat run;
    const QStringList families = format.fontFamilies().toStringList();
    run.font = tables.font((families.isEmpty() ? base.family() : families.first()).toStdString());
    const double points = format.hasProperty(QTextFormat::FontPointSize) ? format.fontPointSize() : base.pointSizeF();
    run.halfPoints = static_cast<int>(std::lround(points * 2));
    run.bold = (format.hasProperty(QTextFormat::FontWeight) ? format.fontWeight() : base.weight()) >= QFont::DemiBold;
    run.italic = format.hasProperty(QTextFormat::FontItalic) ? format.fontItalic() : base.italic();
    run.underline = format.hasProperty(QTextFormat::TextUnderlineStyle) || format.hasProperty(QTextFormat::FontUnderline)
                        ? format.fontUnderline()
                        : base.underline();
    run.strikethrough = format.hasProperty(QTextFormat::FontStrikeOut) ? format.fontStrikeOut() : base.strikeOut();
    if (format.foreground().style() != Qt::NoBrush)
        run.colour = tables.colour(format.foreground().color());
    return run;
}

std::string runTextOf(const QString& text)
{
    QString plain = text;
    plain.replace(QChar::LineSeparator, QLatin1Char('\n'));
    plain.remove(QChar::ObjectReplacementCharacter);
    return plain.toStdString();
}

} // namespace

Bitmap bitmapOfImage(const QImage& image)
{
    const QImage rgb = image.convertToFormat(QImage::Format_RGB888);
    Bitmap bitmap{rgb.width(), rgb.height(), {}};
    const auto stride = static_cast<std::size_t>(rgb.width()) * 3;
    bitmap.pixels.resize(stride * static_cast<std::size_t>(rgb.height()));
    for (int y = 0; y < rgb.height(); ++y)
        std::copy_n(rgb.constScanLine(y), stride, bitmap.pixels.data() + static_cast<std::size_t>(y) * stride);
    return bitmap;
}

void insertPicture(QTextCursor& cursor, const QImage& image, int goalWidthTwips, int goalHeightTwips,
                   const std::string& png)
{
    QTextDocument& document = *cursor.document();
    const QString name = pictureName(document);
    document.addResource(QTextDocument::ImageResource, QUrl(name), image);
    if (!png.empty())
        document.addResource(QTextDocument::UserResource, QUrl(name),
                             QByteArray(png.data(), static_cast<qsizetype>(png.size())));
    QTextImageFormat format;
    format.setName(name);
    const int widthTwips = goalWidthTwips > 0 ? goalWidthTwips : image.width() * kTwipsPerPixel;
    const int heightTwips = goalHeightTwips > 0 ? goalHeightTwips : image.height() * kTwipsPerPixel;
    format.setWidth(std::min(widthTwips, kLargestGoalTwips) / static_cast<double>(kTwipsPerPixel));
    format.setHeight(std::min(heightTwips, kLargestGoalTwips) / static_cast<double>(kTwipsPerPixel));
    cursor.insertImage(format);
}

void toTextDocument(const rtf::Document& document, QTextDocument& target)
{
    target.clear();
    QTextCursor cursor(&target);
    bool first = true;
    for (const auto& paragraph : document.paragraphs) {
        QTextBlockFormat block;
        block.setAlignment(alignmentOf(paragraph.alignment));
        if (first)
            cursor.setBlockFormat(block);
        else
            cursor.insertBlock(block);
        first = false;
        for (const auto& run : paragraph.runs) {
            const QTextCharFormat format = charFormatOf(run.format, document);
            if (!run.picture) {
                QString text = QString::fromStdString(run.text);
                text.replace(QLatin1Char('\n'), QChar::LineSeparator);
                cursor.insertText(text, format);
                continue;
            }
            const auto& picture = *run.picture;
            const QImage image = QImage::fromData(
                QByteArray::fromRawData(picture.png.data(), static_cast<qsizetype>(picture.png.size())), "PNG");
            if (image.isNull())
                continue; // a damaged picture is left out; the text around it stays
            cursor.setCharFormat(format);
            insertPicture(cursor, image, picture.goalWidthTwips, picture.goalHeightTwips, picture.png);
        }
    }
}

rtf::Document fromTextDocument(const QTextDocument& source)
{
    rtf::Document document;
    Tables tables(document);
    const QFont base = source.defaultFont();
    tables.font(base.family().toStdString());
    for (QTextBlock block = source.begin(); block.isValid(); block = block.next()) {
        document.newParagraph(alignmentOf(block.blockFormat().alignment()));
        for (auto fragment = block.begin(); !fragment.atEnd(); ++fragment) {
            const QTextFragment part = fragment.fragment();
            const QTextCharFormat format = part.charFormat();
            const rtf::CharFormat run = runFormatOf(format, base, tables);
            if (!format.isImageFormat()) {
                document.append(runTextOf(part.text()), run);
                continue;
            }
            const QTextImageFormat imageFormat = format.toImageFormat();
            const QImage image = imageResource(source, imageFormat.name());
            if (image.isNull())
                continue;
            const QVariant kept = source.resource(QTextDocument::UserResource, QUrl(imageFormat.name()));
            rtf::Picture picture;
            if (kept.typeId() == QMetaType::QByteArray) {
                const QByteArray bytes = kept.toByteArray();
                picture.png.assign(bytes.constData(), static_cast<std::size_t>(bytes.size()));
                picture.widthPixels = image.width();
                picture.heightPixels = image.height();
            } else {
                picture = pngPicture(bitmapOfImage(image));
            }
            const double width = imageFormat.width() > 0 ? imageFormat.width() : image.width();
            const double height = imageFormat.height() > 0 ? imageFormat.height() : image.height();
            picture.goalWidthTwips = static_cast<int>(std::lround(width * kTwipsPerPixel));
            picture.goalHeightTwips = static_cast<int>(std::lround(height * kTwipsPerPixel));
            for (int i = 0; i < part.length(); ++i)
                document.appendPicture(picture, run);
        }
    }
    return document;
}

} // namespace zw
