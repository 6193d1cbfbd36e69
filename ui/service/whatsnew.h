#pragma once

#include <QDialog>

class QTextEdit;

namespace zw {

class ProgramPaths;

// "Was ist neu in dieser Version?".
class whatsnew : public QDialog
{
public:
    explicit whatsnew(QWidget* parent);
    // Loads the news file; false when it could not be read.
    bool load(const ProgramPaths& paths);

private:
    QTextEdit* m_text;
};

} // namespace zw
