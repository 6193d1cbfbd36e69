#include "ui/mail/frmLog.h"

#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <string>

#include "ui/frame/QtText.h"
#include "ui/mail/MailControls.h"

namespace zw {

using namespace mailwindows;

frmLog::frmLog(QWidget* parent) : QDialog(parent)
{
    setObjectName("frmLog");
    setWindowTitle("Protokoll");
    m_status = new QPlainTextEdit(this);
    m_status->setObjectName("txtStatus");
    m_status->setReadOnly(true);
    m_status->setLineWrapMode(QPlainTextEdit::NoWrap);
    (new QVBoxLayout(this))->addWidget(m_status);
    resize(620, 420);
}

void frmLog::add(const std::string& piece)
{
    QTextCursor cursor(m_status->document());
    cursor.movePosition(QTextCursor::Start);
    QString shown = qt(piece);
    shown.remove('\r');
    cursor.insertText(shown);
}

QString frmLog::text() const { return m_status->toPlainText(); }

} // namespace zw
