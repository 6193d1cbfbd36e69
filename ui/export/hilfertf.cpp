#include "ui/export/hilfertf.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace zw {

void showHilfertf(QWidget* parent)
{
    QDialog dialog(parent);
    dialog.setObjectName("hilfertf");
    dialog.setWindowTitle("Hilfe zur Texteingabe beim RTF-Export");
    auto* layout = new QVBoxLayout(&dialog);
    auto* text = new QTextBrowser(&dialog);
    text->setHtml(QString::fromUtf8(
        "<h3>Export als RTF-Datei</h3>"
        "<p>Das Fenster zeigt Ihren Beleg als Bild in einem kleinen Textdokument. Sie können vor und nach dem Bild "
        "eigenen Text schreiben, zum Beispiel einen Hinweis oder eine Anschrift. Der Beleg selbst ist ein Bild und "
        "lässt sich hier nicht ändern.</p>"
        "<p><b>Exportieren</b> speichert das Dokument als RTF-Datei mit dem eingebetteten Bild. Nach dem Speichern "
        "steht der Dateiname in der Titelleiste. RTF-Dateien öffnen Textverarbeitungen wie LibreOffice Writer.</p>"
        "<p><b>Drucken</b> druckt das Dokument; ist Text markiert, können Sie auch nur die Markierung drucken.</p>"
        "<p><b>Schriftart</b> legt Schrift, Größe, Stil, Effekte und Farbe für den markierten oder den "
        "folgenden Text fest.</p>"
        "<p><b>Zurück</b> schließt das Fenster. Was Sie nicht exportiert haben, geht dabei verloren.</p>"));
    text->setMinimumSize(460, 300);
    layout->addWidget(text);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, &dialog);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    layout->addWidget(buttons);
    dialog.exec();
}

} // namespace zw
