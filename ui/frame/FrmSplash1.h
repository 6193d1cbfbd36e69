#pragma once

#include <QWidget>
#include <optional>

#include "core/RunError.h"

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

    // A background folder that could not be made: the main window's error window reports it once it exists.
    const std::optional<RunError>& fault() const { return m_fault; }

private:
    QProgressBar* m_progressBar;
    QLabel* m_progText;
    QLabel* m_version;
    std::optional<RunError> m_fault;
};

} // namespace zw
