#include "ui/frame/AboutWindow.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QSysInfo>
#include <QVBoxLayout>

#include "app/Version.h"
#include "ui/frame/QtText.h"

namespace zw {

void showAboutWindow(QWidget* parent, const char* name, const char* title, AboutText text,
                     const std::string& webHome)
{
    QDialog dialog(parent);
    dialog.setObjectName(name);
    dialog.setWindowTitle(title);
    auto* layout = new QVBoxLayout(&dialog);
    auto* headline = new QLabel("Zettelwerk V" + qt(versionText()), &dialog);
    QFont big = headline->font();
    big.setBold(true);
    big.setPointSize(big.pointSize() + 4);
    headline->setFont(big);
    layout->addWidget(headline);
    layout->addWidget(
        new QLabel("Quittungen und Belege ausstellen, drucken, exportieren und verwalten.", &dialog));
    if (text == AboutText::ProgramAndRights) {
        layout->addWidget(new QLabel("Version " + qt(versionText()), &dialog));
        // The system's line: its name and, as the old line had, its version in brackets.
        layout->addWidget(new QLabel(
            QSysInfo::prettyProductName() + " ( Version " + QSysInfo::kernelVersion() + ")", &dialog));
        layout->addWidget(new QLabel("Copyright © Zettelwerk. Alle Rechte vorbehalten.", &dialog));
    }
    auto* web = new QLabel("<a href=\"" + qt(webHome) + "\">" + qt(webHome) + "</a>", &dialog);
    web->setOpenExternalLinks(true);
    layout->addWidget(web);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, &dialog);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    layout->addWidget(buttons);
    dialog.exec();
}

} // namespace zw
