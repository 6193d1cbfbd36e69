#include "ui/print/PictureFileWindow.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/print/PrintControls.h"

namespace zw {

using printwindows::addSaveAndLeave;
using printwindows::button;

PictureFileWindow::PictureFileWindow(PictureCommands& commands, PictureKind kind, QWidget* parent)
    : QDialog(parent), m_commands(commands), m_kind(kind)
{
    const bool logo = kind == PictureKind::Logo;
    setObjectName(logo ? "logodatei" : "stunter");
    setWindowTitle(logo ? "Logodatei wählen" : "Stempel-/ Unterschriftsdatei wählen");
    m_file = new QLineEdit(this);
    m_file->setObjectName(logo ? "logo" : "stempel");
    auto* browse = new QToolButton(this);
    browse->setText("...");
    connect(browse, &QToolButton::clicked, this, [this] {
        QString file = QFileDialog::getOpenFileName(this, "Öffnen", m_file->text(), "JPG (*.JPG *.jpg);;BMP (*.BMP *.bmp)");
        if (!file.isEmpty())
            m_file->setText(file);
    });
    auto* everyStart = new QCheckBox(logo ? "Logo bei jedem Neustart anzeigen"
                                          : "Stempel-/Unterschrift bei jedem Neustart anzeigen",
                                     this);
    everyStart->setObjectName(logo ? "logoanaus" : "unteranaus");
    const PictureFileChoice choice = m_commands.openFileWindow(kind, m_file->text().toStdString());
    m_file->setText(QString::fromStdString(choice.path));
    everyStart->setChecked(choice.everyStart);
    connect(everyStart, &QCheckBox::clicked, this, [this](bool on) { m_commands.setEveryStart(m_kind, on); });
    auto* save = button("xpButton1", "&Speichern", this);
    connect(save, &QPushButton::clicked, this, [this] {
        m_commands.saveFile(m_kind, m_file->text().toStdString());
        accept();
    });
    auto* leave = button("xpButton2", "&Abbrechen", this);
    connect(leave, &QPushButton::clicked, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    auto* headline = new QLabel(windowTitle(), this);
    QFont bold = headline->font();
    bold.setBold(true);
    headline->setFont(bold);
    layout->addWidget(headline);
    layout->addWidget(new QLabel(logo ? "Empfohlene Größe: 313 x 97 Pixel. Sollte sie größer sein, wird Sie dem Feld "
                                        "angepasst."
                                      : "Empfohlene Größe: 257 x 57 Pixel. Sollte sie größer sein, wird Sie dem Feld "
                                        "angepasst.",
                                 this));
    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(m_file, 1);
    fileRow->addWidget(browse);
    layout->addLayout(fileRow);
    layout->addWidget(everyStart);
    addSaveAndLeave(layout, save, leave);
}

} // namespace zw
