#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QUrl>
#include <vector>

namespace zw::test {

// Records the addresses and files the program hands to the desktop instead of opening them.
class UrlRecorder : public QObject
{
    Q_OBJECT
public:
    UrlRecorder()
    {
        for (const char* scheme : {"http", "https", "file"})
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    ~UrlRecorder() override
    {
        for (const char* scheme : {"http", "https", "file"})
            QDesktopServices::unsetUrlHandler(scheme);
    }
    std::vector<QString> urls;

public slots:
    void open(const QUrl& url) { urls.push_back(url.toString()); }
};

} // namespace zw::test
