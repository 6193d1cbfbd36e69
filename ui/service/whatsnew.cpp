#include "ui/service/whatsnew.h"

#include <QLabel>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

#include "app/ProgramPaths.h"
#include "app/TextFile.h"
#include "app/Version.h"
#include "ui/service/ServiceControls.h"

namespace zw {

using servicewindows::button;
using servicewindows::lines;

whatsnew::whatsnew(QWidget* parent) : QDialog(parent)
{
    setObjectName("whatsnew");
    setWindowTitle("Was ist neu in dieser Version?");
    setModal(true);
    auto* version =
        new QLabel(QString("%1 . %2 . %3").arg(kVersionMajor).arg(kVersionMinor).arg(kVersionRevision), this);
    version->setObjectName("Label2");
    QFont bold = version->font();
    bold.setBold(true);
    version->setFont(bold);
    m_text = new QTextEdit(this);
    m_text->setObjectName("sevText1");
    m_text->setReadOnly(true);
    m_text->setMinimumSize(560, 470); // the whole news of a version without scrolling
    auto* close = button("xpButton1", "&Schließen", this);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto* keys = new QHBoxLayout;
    keys->addStretch();
    keys->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(version);
    layout->addWidget(m_text, 1);
    layout->addLayout(keys);
}

bool whatsnew::load(const ProgramPaths& paths)
{
    m_text->setPlainText(lines(readTextFile(paths.home() / "neu_in_dieser_version.txt")));
    return true;
}

} // namespace zw
