#include "ui/RichTextView.h"

#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>

#include "export/rtf/RtfDocument.h"

namespace zw {

void showRichText(const rtf::Document& document, QTextDocument& target)
{
    target.clear();
    QTextCursor cursor(&target);
    bool first = true;
    for (const auto& paragraph : document.paragraphs) {
        QTextBlockFormat block;
        switch (paragraph.alignment) {
        case rtf::Alignment::Centre:
            block.setAlignment(Qt::AlignHCenter);
            break;
        case rtf::Alignment::Right:
            block.setAlignment(Qt::AlignRight);
            break;
        case rtf::Alignment::Justified:
            block.setAlignment(Qt::AlignJustify);
            break;
        case rtf::Alignment::Left:
            block.setAlignment(Qt::AlignLeft);
            break;
        }
        if (first)
            cursor.setBlockFormat(block);
        else
            cursor.insertBlock(block);
        first = false;
        for (const auto& run : paragraph.runs) {
            QTextCharFormat format;
            format.setFontWeight(run.format.bold ? QFont::Bold : QFont::Normal);
            format.setFontItalic(run.format.italic);
            format.setFontUnderline(run.format.underline);
            format.setFontPointSize(run.format.halfPoints / 2.0);
            if (run.format.font >= 0 && static_cast<std::size_t>(run.format.font) < document.fonts.size())
                format.setFontFamilies({QString::fromStdString(document.fonts[static_cast<std::size_t>(run.format.font)].name)});
            if (run.format.colour > 0 && static_cast<std::size_t>(run.format.colour) <= document.colours.size()) {
                const auto& colour = document.colours[static_cast<std::size_t>(run.format.colour) - 1];
                format.setForeground(QColor(colour.red, colour.green, colour.blue));
            }
            cursor.insertText(QString::fromStdString(run.text), format);
        }
    }
}

} // namespace zw
