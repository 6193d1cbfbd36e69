#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "net/Transfer.h"

namespace zw {

class FormHost;
struct VendorAddresses;

// The parts of a URL, filled by GetURL.
class cURL
{
public:
    std::string Scheme;
    std::int32_t lScheme = 0; // 1 ftp, 3 http, 4 https, 5 file; -1 for any other
    std::string HostName;
    std::int32_t Port = 0;
    std::string UserName;
    std::string Password;
    std::string URLPath;
    std::string URLExtraInfo; // the query with its "?"

    // False for a URL that cannot be split; the parts are then empty.
    bool GetURL(const std::string& url);
};

// One HTTP GET of a file into a folder, reporting its progress through Update on the poster's thread.
class clsDownload
{
public:
    explicit clsDownload(net::EventPoster& poster);
    ~clsDownload(); // stops a running transfer

    std::uint8_t Status = 0; // 1 from the start of Download to its end
    std::int32_t Size = 0;
    std::int32_t ReceivedBytes = 0;
    double Speed = 0;              // bytes per second
    std::int32_t Downloadtime = 0; // milliseconds since the transfer began
    std::int32_t ErrorNumber = 0;
    std::string ErrorDescription;

    std::function<void()> Update;   // the event: progress, or an error
    std::function<void()> Finished; // Download has come to its end, whatever the outcome

    // Starts fetching `url` into `folder` + the URL's last segment; the folder is joined without a separator.
    // The blocks go into a temporary file beside it, renamed onto it only when the whole answer arrived, so an
    // aborted or broken transfer leaves no short file; an answer other than 200 is an error before any block.
    void Download(const std::string& url, const std::string& folder);
    // Asks a running transfer to stop; it ends within a second, without writing the file.
    void StopDownload();

    // Waits for the end, running `pump` meanwhile (the command line's event queue).
    void wait(const std::function<void()>& pump) const;

    net::Timeouts timeouts; // a server that stays silent this long ends the transfer

private:
    void fail(std::int32_t number, const char* description);
    void end();

    net::EventPoster& m_poster;
    std::unique_ptr<net::Transfer> m_transfer;
    std::filesystem::path m_target;
    std::chrono::steady_clock::time_point m_started;
};

// The error texts of the download, by number.
std::string downloadErrorDescription(std::int32_t number);

// Where the update description lies on the vendor's server.
std::string updateDescriptionUrl(const VendorAddresses& vendor);
// The fetch of the description; reading stops at the description's limit while it arrives.
net::HttpGet updateDescriptionRequest(const VendorAddresses& vendor);

enum class UpdateOutcome { Newer, Same, Older };

// The check of the update window: the five captions, kept for the window's life, so a second check appends.
class UpdateCheck
{
public:
    std::array<std::string, 5> captions; // Text1 to Text5: filler, name, version, size, installer URL

    // Takes the server's answer (its first four characters are lost to the local copy's header) through
    // `localCopy`, which is written, read in rounds of five lines and deleted, and compares the version caption
    // with `installed` as plain text (3.10.0 is older than 3.9.0). An answer shorter than four characters throws
    // RunError 5; a description that is not whole rounds of five lines throws RunError 62.
    UpdateOutcome take(const std::string& response, const std::filesystem::path& localCopy,
                       const std::string& installed);
};

// The status line of the check's outcome; empty for an older version.
std::string updateStatusText(UpdateOutcome outcome);

// The name the downloaded installer gets: zettelwerk_<major>_<minor>_<revision>.exe of the running version.
std::string installerName();
// Renames <folder>/zettelwerk.exe to that name and returns the new path. An existing target throws RunError 58, a
// missing download RunError 53.
std::filesystem::path renameInstaller(const std::filesystem::path& folder);

// The status line once a download has ended: the error line stays when it failed, as there is no file.
std::string downloadEndStatus(const clsDownload& download);

// The number format of the user's locale.
struct NumberSeparators
{
    std::string group = ".";
    std::string decimal = ",";
};

// What the update window shows after a progress event of `download`.
struct DownloadDisplay
{
    std::string size;     // "<Size> Bytes"
    std::string received; // "<ReceivedBytes> Bytes"
    std::string speed;    // "#,##0.00 KB/s"
    std::string status;   // "Status: Download läuft 12,3% empfangen", or the error line
    int percent = 0;
};
DownloadDisplay downloadDisplay(const clsDownload& download, const NumberSeparators& separators);

// The question after a download, and the message of the menu's update command with the installed version.
std::string updateStartQuestion();
std::string versionPageQuestion(const std::string& installed);

// The menu's update command: the installed version and, on yes, the vendor's version page in the browser.
void updaten(FormHost& host, const VendorAddresses& vendor, const std::function<void(const std::string& url)>& browse);

} // namespace zw
