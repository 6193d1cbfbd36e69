#pragma once

#include <QWidget>

class QLabel;
class QProgressBar;

namespace zw {

class ProgramPaths;

// The splash window: makes hintergrund/ if missing, then runs the step list as a progress display.
class FrmSplash1 : public QWidget
{
public:
    FrmSplash1(const ProgramPaths& paths, QWidget* parent = nullptr);

    // Shows the steps one after the other, waiting `stepSeconds` at each.
    void laden(double stepSeconds = 0.1);

    int progress() const;
    QString stepText() const;

private:
    QProgressBar* m_progressBar;
    QLabel* m_progText;
    QLabel* m_version;
};

} // namespace zw
