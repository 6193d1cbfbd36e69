#pragma once

#include <QDialog>
#include <string>

class QPlainTextEdit;

namespace zw {

// "Protokoll": one window for the whole run, the transcript of every mail, newest first.
class frmLog : public QDialog
{
public:
    explicit frmLog(QWidget* parent);
    void add(const std::string& text);
    QString text() const;

private:
    QPlainTextEdit* m_status;
};

} // namespace zw
