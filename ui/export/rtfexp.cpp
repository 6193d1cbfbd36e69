#include "ui/export/rtfexp.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTextBlock>
#include <QToolBar>
#include <QVBoxLayout>
#include <array>
#include <cmath>

#include "core/RunError.h"
#include "ui/export/hilfertf.h"
#include "ui/frame/FileDialogs.h"
#include "ui/frame/MessageDialog.h"
#include "ui/frame/RtfBridge.h"
#include "ui/frame/Ruler.h"

namespace zw {
namespace {

constexpr int kBoxWidth = 660;

// The colours the font dialog offers, as the system's font dialog always listed them.
struct NamedColour
{
    const char* name;
    rtf::Colour colour;
};
constexpr std::array<NamedColour, 16> kFontColours{{
    {"Schwarz", {0, 0, 0}},       {"Dunkelrot", {128, 0, 0}},  {"Grün", {0, 128, 0}},     {"Oliv", {128, 128, 0}},
    {"Marineblau", {0, 0, 128}},  {"Violett", {128, 0, 128}},  {"Blaugrün", {0, 128, 128}}, {"Grau", {128, 128, 128}},
    {"Silber", {192, 192, 192}},  {"Rot", {255, 0, 0}},        {"Hellgrün", {0, 255, 0}},  {"Gelb", {255, 255, 0}},
    {"Blau", {0, 0, 255}},        {"Fuchsie", {255, 0, 255}},  {"Aqua", {0, 255, 255}},    {"Weiß", {255, 255, 255}},
}};

QFont resolvedFont(const QTextCharFormat& format, const QFont& base) { return format.font().resolve(base); }

// Name, size, bold and italic of the selection; each is nothing when the selection holds more than one value.
SelectionFont selectionFont(const QTextEdit& box)
{
    const QFont base = box.document()->defaultFont();
    const QTextCursor cursor = box.textCursor();
    std::vector<QFont> fonts;
    if (!cursor.hasSelection()) {
        fonts.push_back(resolvedFont(box.currentCharFormat(), base));
    } else {
        const int start = cursor.selectionStart();
        const int end = cursor.selectionEnd();
        for (QTextBlock block = box.document()->findBlock(start); block.isValid() && block.position() < end;
             block = block.next()) {
            for (auto it = block.begin(); !it.atEnd(); ++it) {
                const QTextFragment fragment = it.fragment();
                if (fragment.position() + fragment.length() > start && fragment.position() < end)
                    fonts.push_back(resolvedFont(fragment.charFormat(), base));
            }
        }
        if (fonts.empty())
            fonts.push_back(resolvedFont(box.currentCharFormat(), base));
    }
    auto common = [&](auto value) -> std::optional<decltype(value(fonts.front()))> {
        for (const QFont& font : fonts) {
            if (value(font) != value(fonts.front()))
                return std::nullopt;
        }
        return value(fonts.front());
    };
    SelectionFont result;
    result.name = common([](const QFont& font) { return font.family().toStdString(); });
    result.pointSize = common([](const QFont& font) { return font.pointSizeF(); });
    result.bold = common([](const QFont& font) { return font.bold(); });
    result.italic = common([](const QFont& font) { return font.italic(); });
    return result;
}

// The toolkit's font dialog with the colour list that the system's dialog has beside the effects.
class FontColourDialog : public QDialog
{
public:
    FontColourDialog(const FontDialogValues& preset, QWidget* parent) : QDialog(parent)
    {
        setObjectName("CommonDialog1");
        setWindowTitle("Schriftart");
        auto* layout = new QVBoxLayout(this);
        m_font = new QFontDialog(this);
        m_font->setOptions(QFontDialog::NoButtons | QFontDialog::DontUseNativeDialog);
        m_font->setWindowFlags(Qt::Widget);
        QFont font(QString::fromStdString(preset.name));
        font.setPointSizeF(preset.pointSize);
        font.setBold(preset.bold);
        font.setItalic(preset.italic);
        font.setUnderline(preset.underline);
        font.setStrikeOut(preset.strikethrough);
        m_font->setCurrentFont(font);
        layout->addWidget(m_font);
        auto* colourRow = new QHBoxLayout;
        colourRow->addWidget(new QLabel("Farbe:", this));
        m_colour = new QComboBox(this);
        for (const auto& entry : kFontColours) {
            QPixmap swatch(16, 12);
            swatch.fill(QColor(entry.colour.red, entry.colour.green, entry.colour.blue));
            m_colour->addItem(QIcon(swatch), QString::fromUtf8(entry.name));
            if (entry.colour == preset.colour)
                m_colour->setCurrentIndex(m_colour->count() - 1);
        }
        colourRow->addWidget(m_colour);
        colourRow->addStretch();
        layout->addLayout(colourRow);
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
        buttons->button(QDialogButtonBox::Cancel)->setText("Abbrechen");
        connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
        layout->addWidget(buttons);
    }

    FontDialogValues chosen() const
    {
        const QFont font = m_font->currentFont();
        return {font.family().toStdString(), font.pointSizeF(), font.bold(), font.italic(), font.underline(),
                font.strikeOut(), kFontColours[static_cast<std::size_t>(std::max(0, m_colour->currentIndex()))].colour};
    }

private:
    QFontDialog* m_font = nullptr;
    QComboBox* m_colour = nullptr;
};

} // namespace

RtfTextBox::RtfTextBox(QWidget* parent) : QTextEdit(parent)
{
    setObjectName("RTFBox");
    document()->setDefaultFont(QFont(kRtfViewFontName, kRtfViewFontHalfPoints / 2));
}

bool RtfTextBox::canInsertFromMimeData(const QMimeData* source) const
{
    return source->hasImage() || QTextEdit::canInsertFromMimeData(source);
}

void RtfTextBox::insertFromMimeData(const QMimeData* source)
{
    if (!source->hasImage()) {
        QTextEdit::insertFromMimeData(source);
        return;
    }
    const QImage image = qvariant_cast<QImage>(source->imageData());
    if (image.isNull())
        return;
    QTextCursor cursor = textCursor();
    insertPicture(cursor, image);
    setTextCursor(cursor);
}

rtfexp::rtfexp(QWidget* parent) : QDialog(parent)
{
    setObjectName("rtfexp");
    setWindowTitle("Export als RTF-Datei");
    auto* layout = new QVBoxLayout(this);
    m_toolbar = new QToolBar(this);
    m_toolbar->setObjectName("Coolbar1");
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    addKey("export_bar", "Exportieren", "Exportieren", &rtfexp::exportBar);
    addKey("drucken_bar", "Drucken", "Drucken", &rtfexp::druckenBar);
    addKey("schriftart_bar", "Schriftart", "Schriftart", &rtfexp::schriftartBar);
    addKey("hilfe_bar", "Hilfe", "Hilfe", &rtfexp::hilfeBar);
    addKey("ende_bar", "Zurück", "Zurück", &rtfexp::endeBar);
    layout->addWidget(m_toolbar);
    m_ruler = new Ruler(Qt::Horizontal, kBoxWidth, this);
    m_ruler->setObjectName("Ruler1");
    layout->addWidget(m_ruler);
    m_box = new RtfTextBox(this);
    m_box->setMinimumSize(kBoxWidth, 500);
    layout->addWidget(m_box);
    m_saveDialog.setPresenter(fileDialogPresenter(this));

    // The picture is pasted before the window shows, so it is there at first sight; whatever the clipboard held
    // before is gone afterwards, as the program always did it.
    m_box->paste();
    QGuiApplication::clipboard()->clear();
    m_box->moveCursor(QTextCursor::End);
}

void rtfexp::addKey(const char* key, const QString& caption, const QString& toolTip, void (rtfexp::*handler)())
{
    QAction* action = m_toolbar->addAction(caption);
    action->setObjectName(key);
    action->setToolTip(toolTip);
    connect(action, &QAction::triggered, this, [this, handler] { (this->*handler)(); });
}

rtf::Document rtfexp::document() const
{
    rtf::Document result = fromTextDocument(*m_box->document());
    result.page = kRtfViewPage;
    return result;
}

void rtfexp::exportBar()
{
    if (auto path = exportRtfFile(m_saveDialog, [this] { return document(); }))
        setWindowTitle(QString::fromStdString(*path));
}

void rtfexp::druckenBar()
{
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    dialog.setObjectName("CommonDialog2");
    dialog.setWindowTitle("Drucken");
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    dialog.setOption(QAbstractPrintDialog::PrintSelection, m_box->textCursor().hasSelection());
    if (dialog.exec() != QDialog::Accepted)
        return;
    printTo(printer);
}

void rtfexp::printTo(QPrinter& printer) const { m_box->print(&printer); }

FontDialogValues rtfexp::showFontDialog(const FontDialogValues& preset)
{
    FontColourDialog dialog(preset, this);
    if (dialog.exec() != QDialog::Accepted)
        throw CommonDialog::cancelled();
    return dialog.chosen();
}

void rtfexp::schriftartBar()
{
    const FontCommandOutcome outcome = zw::schriftartBar(
        selectionFont(*m_box), m_fontPresenter ? m_fontPresenter
                                               : [this](const FontDialogValues& preset) { return showFontDialog(preset); });
    if (!outcome.message.empty()) {
        MessageDialog::showMessage(this, outcome.message, MessageStyle::Error, "Zettelwerk");
        return;
    }
    if (!outcome.chosen)
        return;
    const FontDialogValues& chosen = *outcome.chosen;
    QTextCharFormat format;
    format.setFontFamilies({QString::fromStdString(chosen.name)});
    format.setFontPointSize(chosen.pointSize);
    format.setFontWeight(chosen.bold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(chosen.italic);
    format.setFontUnderline(chosen.underline);
    format.setFontStrikeOut(chosen.strikethrough);
    format.setForeground(QColor(chosen.colour.red, chosen.colour.green, chosen.colour.blue));
    m_box->mergeCurrentCharFormat(format);
    m_box->setFocus();
}

void rtfexp::hilfeBar() { showHilfertf(this); }

void rtfexp::endeBar() { close(); }

} // namespace zw
