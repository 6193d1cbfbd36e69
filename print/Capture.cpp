#include "print/Capture.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>

#include "app/Appearance.h"
#include "app/ProgramPaths.h"
#include "core/ReceiptForm.h"
#include "print/FormFonts.h"
#include "print/ReceiptLayout.h"

namespace zw {
namespace {

using F = FormElement;

// The grey of the area where the background picture does not reach.
const QColor kAreaColour(0xF0, 0xF0, 0xF0);

bool isPicture(F element) { return element == F::Image3 || element == F::Image6 || element == F::Image7; }

// Inner margins of the screen's fields: a frameless line edit keeps 2 pixels, a text box 4, a caption none.
int textMargin(const LayoutEntry& entry)
{
    if (!entry.editable)
        return 0;
    return entry.multiLine ? 4 : 2;
}

int alignmentFlags(const LayoutEntry& entry)
{
    if (entry.multiLine)
        return Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;
    return static_cast<int>(alignmentOf(entry.editable ? entry.align : Align::Left));
}

void drawText(QPainter& painter, const ReceiptForm& form, const LayoutEntry& entry)
{
    QString text = QString::fromStdString(form.text(entry.element));
    if (text.isEmpty())
        return;
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QRect field(entry.leftPixels(), entry.topPixels(), entry.widthPixels(), entry.heightPixels());
    painter.setFont(formFont(form, entry.element));
    // A one-line caption is never cut, here as on the screen: the form's font may be a little wider than the
    // one the form was drawn for ("% MwSt.").
    if (!entry.editable && !entry.multiLine) {
        const auto span = captionSpan(entry, painter.fontMetrics().horizontalAdvance(text));
        field.setLeft(span.left);
        field.setWidth(span.width);
        if (span.fontScale < 1.0)
            painter.setFont(scaledFont(painter.font(), span.fontScale));
    }
    const int margin = textMargin(entry);
    QRect inner = field.adjusted(margin, entry.multiLine && entry.editable ? margin : 0, -margin, 0);
    int flags = alignmentFlags(entry);
    // A line edit whose text is wider than itself shows the text's beginning, whatever its alignment.
    if (!entry.multiLine && painter.fontMetrics().horizontalAdvance(text) > inner.width())
        flags = (flags & ~Qt::AlignHorizontal_Mask) | Qt::AlignLeft;
    painter.setClipRect(field);
    painter.drawText(inner, flags, text);
    painter.setClipping(false);
}

} // namespace

Capture::Capture(const ProgramPaths& paths) : m_paths(paths) {}

const QImage& Capture::picture(const std::filesystem::path& file) const
{
    static const QImage kNone;
    std::error_code error;
    auto modified = std::filesystem::last_write_time(file, error);
    if (error)
        return kNone;
    auto found = m_pictures.find(file);
    if (found == m_pictures.end() || found->second.modified != modified) {
        QImage image(QString::fromStdString(file.string()));
        found = m_pictures.insert_or_assign(file, CachedPicture{modified, std::move(image)}).first;
    }
    return found->second.image;
}

void Capture::drawLook(QPainter& painter, const ReceiptForm& form) const
{
    if (!m_look->fieldColour())
        return;
    // A system colour (the button face of the standard entry) is the desktop's, as the screen shows it.
    const auto rgb = rgbOfColourNumber(*m_look->fieldColour());
    const QColor fill = rgb ? QColor(rgb->red, rgb->green, rgb->blue) : QGuiApplication::palette().color(QPalette::Button);
    for (F field : {F::Text1, F::Text2, F::Text3, F::Text10, F::Text11, F::Text12, F::Text5, F::Text6, F::Text7,
                    F::Text8, F::Text9, F::Text14}) {
        auto entry = layoutOf(field);
        if (entry && form.isVisible(field))
            painter.fillRect(QRect(entry->leftPixels(), entry->topPixels(), entry->widthPixels(), entry->heightPixels()),
                             fill);
    }
}

QImage Capture::operator()(const ReceiptForm& form) const
{
    QImage photo(kFormWidthPixels, kFormHeightPixels, QImage::Format_RGB32);
    QPainter painter(&photo);
    paint(painter, form);
    return photo;
}

void Capture::paint(QPainter& painter, const ReceiptForm& form) const
{
    painter.fillRect(QRect(0, 0, kFormWidthPixels, kFormHeightPixels), kAreaColour);
    if (!form.formBackground().empty()) {
        const QImage& background = picture(m_paths.resolve(form.formBackground()));
        if (!background.isNull())
            painter.drawImage(0, 0, background);
    }
    if (m_look != nullptr)
        drawLook(painter, form);
    painter.setPen(Qt::black);
    // Later entries of the table lie above earlier ones, as the screen stacks them.
    for (const auto& entry : receiptLayout()) {
        if (!form.isVisible(entry.element))
            continue;
        if (isPicture(entry.element)) {
            if (form.picture(entry.element).empty())
                continue;
            const QImage& image = picture(form.picture(entry.element));
            if (!image.isNull()) {
                painter.drawImage(QRect(entry.leftPixels(), entry.topPixels(), entry.widthPixels(),
                                        entry.heightPixels()),
                                  image);
            }
            continue;
        }
        drawText(painter, form, entry);
    }
}

} // namespace zw
