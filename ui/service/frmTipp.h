#pragma once

#include <QDialog>

#include "service/Tips.h"

class QLabel;
class QTextEdit;

namespace zw {

class FormHost;
class ProgramPaths;
class Random;
class Settings;

// "Tipp des Tages".
class frmTipp : public QDialog
{
public:
    frmTipp(const ProgramPaths& paths, Settings& settings, FormHost& host, Random& random, QWidget* parent);

    void showTip(); // DisplayCurrentTip

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    FormHost& m_host;
    TipList m_tips;
    QLabel *m_caption, *m_count;
    QTextEdit* m_content;
    QWidget* m_bottom;
};

} // namespace zw
