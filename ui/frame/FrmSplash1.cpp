#include "ui/frame/FrmSplash1.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>
#include <filesystem>

#include "app/ProgramPaths.h"
#include "app/StartUp.h"
#include "app/Version.h"
#include "ui/frame/Pause.h"

namespace zw {

FrmSplash1::FrmSplash1(const ProgramPaths& paths, QWidget* parent) : QWidget(parent, Qt::SplashScreen)
{
    setObjectName("FrmSplash1");
    setWindowTitle(QString::fromUtf8(kSplashTitle.data(), static_cast<qsizetype>(kSplashTitle.size())));
    std::error_code error;
    if (!std::filesystem::exists(paths.backgroundFolder(), error) &&
        !std::filesystem::create_directories(paths.backgroundFolder(), error))
        m_fault = RunError::pathFileAccess();

    auto* title = new QLabel("Zettelwerk", this);
    QFont big = title->font();
    big.setPointSize(26);
    big.setBold(true);
    title->setFont(big);
    auto* subtitle = new QLabel("Quittungen ausstellen, drucken und ablegen", this);
    m_version = new QLabel(QString::fromStdString("Version " + versionText()), this);
    m_version->setObjectName("version");
    m_progressBar = new QProgressBar(this);
    m_progressBar->setObjectName("ProgressBar");
    m_progressBar->setRange(0, 100);
    m_progressBar->setValue(0);
    m_progText = new QLabel(this);
    m_progText->setObjectName("Prog_Text");

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(28, 24, 28, 20);
    layout->addWidget(title);
    layout->addWidget(subtitle);
    layout->addStretch();
    layout->addWidget(m_progText);
    layout->addWidget(m_progressBar);
    layout->addWidget(m_version, 0, Qt::AlignRight);
    setFixedSize(460, 240);
    setStyleSheet("#FrmSplash1 { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #fdfbf3, "
                  "stop:1 #e6ecf4); border: 1px solid #7a8aa0; }");
    setAttribute(Qt::WA_StyledBackground);
}

void FrmSplash1::laden(double stepSeconds)
{
    for (const auto& step : kSplashSteps) {
        m_progressBar->setValue(std::min(100, m_progressBar->value() + step.growth));
        m_progText->setText(QString::fromUtf8(step.text.data(), static_cast<qsizetype>(step.text.size())));
        pause(stepSeconds);
    }
}

int FrmSplash1::progress() const { return m_progressBar->value(); }
QString FrmSplash1::stepText() const { return m_progText->text(); }

} // namespace zw
