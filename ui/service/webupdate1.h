#pragma once

#include <QDialog>
#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "service/WebUpdate.h"
#include "ui/net/QtEventPoster.h"

class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

namespace zw {

class FormHost;
class ProgramPaths;

// "WebUp": asks the vendor's server for a newer version and fetches its installer.
class webupdate1 : public QDialog
{
public:
    webupdate1(const ProgramPaths& paths, FormHost& host, std::function<void()> endProgram, QWidget* parent);
    ~webupdate1() override;

protected:
    void done(int result) override;

private:
    void check();
    void fetch();
    void showProgress();
    void downloaded();

    const ProgramPaths& m_paths;
    FormHost& m_host;
    std::function<void()> m_endProgram;
    QtEventPoster m_poster;
    std::unique_ptr<net::Transfer> m_description;
    std::unique_ptr<clsDownload> m_download;
    UpdateCheck m_check;
    bool m_closing = false;
    std::array<QLabel*, 5> m_captions{};
    std::array<QLabel*, 7> m_lblStatus{}; // 0 size, 1 received, 5 speed, 6 status
    QLineEdit* m_txtFolder;
    QProgressBar* m_prb;
    std::vector<QWidget*> m_lblInfo;
    QPushButton *m_check1, *m_update4, *m_folder2;
};

} // namespace zw
