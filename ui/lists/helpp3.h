#pragma once

#include <QDialog>
#include <filesystem>

class QTextBrowser;

namespace zw {

// The local handbook, hilfe/index.html. Its view and button keep their places and shares as the window is
// resized; links to the web open in the desktop's browser.
class helpp3 : public QDialog
{
public:
    explicit helpp3(const std::filesystem::path& page, QWidget* parent = nullptr);

private:
    QTextBrowser* m_browser = nullptr;
};

} // namespace zw
