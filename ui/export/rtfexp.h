#pragma once

#include <QDialog>
#include <QTextEdit>

#include "app/CommonDialog.h"
#include "export/RtfExport.h"

class QPrinter;
class QToolBar;

namespace zw {

class Ruler;

// The rich-text box of the RTF view: a picture on the clipboard pastes as a picture of the document.
class RtfTextBox : public QTextEdit
{
public:
    explicit RtfTextBox(QWidget* parent = nullptr);

protected:
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;
};

// The window rtfexp: the receipt's picture in a small word processor, saved as an RTF file or printed. It takes
// what the clipboard holds as it opens and empties the clipboard.
class rtfexp : public QDialog
{
public:
    explicit rtfexp(QWidget* parent = nullptr);

    RtfTextBox* RTFBox() const { return m_box; }
    QToolBar* Coolbar1() const { return m_toolbar; }
    // The save dialog; tests and the command line put their own answer here.
    CommonDialog& dlgCommonDialog() { return m_saveDialog; }
    // The font dialog; the window shows the toolkit's dialog with a colour choice unless told otherwise.
    void setFontPresenter(FontDialogPresenter presenter) { m_fontPresenter = std::move(presenter); }

    rtf::Document document() const;

    void exportBar();     // export_bar
    void druckenBar();    // drucken_bar
    void schriftartBar(); // schriftart_bar
    void hilfeBar();      // hilfe_bar
    void endeBar();       // ende_bar
    void printTo(QPrinter& printer) const;

private:
    void addKey(const char* key, const QString& caption, const QString& toolTip, void (rtfexp::*handler)());
    FontDialogValues showFontDialog(const FontDialogValues& preset);

    Ruler* m_ruler = nullptr;
    RtfTextBox* m_box = nullptr;
    QToolBar* m_toolbar = nullptr;
    CommonDialog m_saveDialog;
    FontDialogPresenter m_fontPresenter;
};

} // namespace zw
