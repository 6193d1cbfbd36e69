#include "service/WebUpdate.h"

#include <algorithm>
#include <cmath>
#include <curl/curl.h>
#include <limits>

#include "app/AtomicFile.h"
#include "app/TextFile.h"
#include "app/VendorAddresses.h"
#include "app/Version.h"
#include "core/FormHost.h"
#include "core/RunError.h"

namespace zw {

namespace {

constexpr long kBlockSize = 8192;
constexpr std::size_t kDescriptionLimit = 524288;

std::int32_t clamp32(std::int64_t value)
{
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, 0, std::numeric_limits<std::int32_t>::max()));
}

std::string part(CURLU* url, CURLUPart which, unsigned flags = 0)
{
    char* text = nullptr;
    if (curl_url_get(url, which, &text, flags) != CURLUE_OK)
        return {};
    std::string copy = text;
    curl_free(text);
    return copy;
}

std::int32_t schemeNumber(const std::string& scheme)
{
    if (scheme == "ftp")
        return 1;
    if (scheme == "http")
        return 3;
    if (scheme == "https")
        return 4;
    if (scheme == "file")
        return 5;
    return -1;
}

// "#,##0.00" with the given separators; without grouping "0.0".
std::string formatted(double value, const NumberSeparators& separators, int decimals, bool groups)
{
    const double scale = std::pow(10.0, decimals);
    const auto scaled = static_cast<long long>(std::llround(std::max(0.0, value) * scale));
    const std::string whole = std::to_string(scaled / static_cast<long long>(scale));
    std::string text;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        if (groups && i > 0 && (whole.size() - i) % 3 == 0)
            text += separators.group;
        text += whole[i];
    }
    if (decimals > 0) {
        std::string fraction = std::to_string(scaled % static_cast<long long>(scale));
        fraction.insert(0, static_cast<std::size_t>(decimals) - fraction.size(), '0');
        text += separators.decimal + fraction;
    }
    return text;
}


} // namespace

bool cURL::GetURL(const std::string& url)
{
    *this = cURL{};
    CURLU* handle = curl_url();
    const bool ok = handle != nullptr && curl_url_set(handle, CURLUPART_URL, url.c_str(), CURLU_NON_SUPPORT_SCHEME |
                                                                                       CURLU_URLENCODE) == CURLUE_OK;
    if (ok) {
        Scheme = part(handle, CURLUPART_SCHEME);
        lScheme = schemeNumber(Scheme);
        HostName = part(handle, CURLUPART_HOST);
        const std::string port = part(handle, CURLUPART_PORT, CURLU_DEFAULT_PORT);
        Port = port.empty() ? 0 : std::stoi(port);
        UserName = part(handle, CURLUPART_USER, CURLU_URLDECODE);
        Password = part(handle, CURLUPART_PASSWORD, CURLU_URLDECODE);
        URLPath = part(handle, CURLUPART_PATH);
        const std::string query = part(handle, CURLUPART_QUERY);
        URLExtraInfo = query.empty() ? "" : "?" + query;
    }
    curl_url_cleanup(handle);
    return ok;
}

std::string downloadErrorDescription(std::int32_t number)
{
    switch (number) {
    case 1: return "Server nicht gefunden";
    case 2: return "URL nicht interpretierbar";
    case 3: return "Downloadgröße 0 Byte";
    case 404: return "Datei nicht gefunden";
    default: return "Unbekannter Fehler";
    }
}

clsDownload::clsDownload(net::EventPoster& poster) : m_poster(poster) {}

clsDownload::~clsDownload() = default;

void clsDownload::fail(std::int32_t number, const char* description)
{
    ErrorNumber = number;
    ErrorDescription = description != nullptr ? description : downloadErrorDescription(number);
    if (Update)
        Update();
}

void clsDownload::end()
{
    Status = 0;
    if (Finished)
        Finished();
}

void clsDownload::Download(const std::string& url, const std::string& folder)
{
    Size = ReceivedBytes = Downloadtime = ErrorNumber = 0;
    Speed = 0;
    ErrorDescription.clear();
    Status = 1;
    cURL parts;
    if (!parts.GetURL(url) || parts.lScheme != 3) {
        fail(2, nullptr);
        end();
        return;
    }
    const std::string joined = parts.URLPath + parts.URLExtraInfo;
    m_target = folder + joined.substr(joined.rfind('/') + 1);
    m_started = std::chrono::steady_clock::now();
    net::TransferEvents events;
    events.progress = [this](std::int64_t now, std::int64_t total) {
        if (now <= 0)
            return; // no block has arrived yet, and an error page never becomes one
        const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(
                                 std::chrono::steady_clock::now() - m_started)
                                 .count();
        Size = clamp32(total);
        ReceivedBytes = clamp32(now);
        Downloadtime = clamp32(elapsed);
        Speed = elapsed > 0 ? static_cast<double>(now) / (static_cast<double>(elapsed) / 1000.0) : 0.0;
        if (Update)
            Update();
    };
    events.finished = [this](const net::TransferResult& result) {
        if (result.aborted) {
            end();
            return;
        }
        if (result.responseCode == 0)
            fail(1, nullptr);
        else if (result.responseCode != 200)
            fail(result.responseCode == 404 ? 404 : static_cast<std::int32_t>(result.responseCode), nullptr);
        else if (result.contentLength <= 0)
            fail(3, nullptr);
        else if (!result.ok())
            fail(1, result.description.c_str()); // broken after the answer began, or the file not writable
        end();
    };
    m_transfer = std::make_unique<net::Transfer>(m_poster, std::move(events));
    m_transfer->start(net::HttpGet{url, m_target, timeouts, kBlockSize});
}

void clsDownload::StopDownload()
{
    if (m_transfer)
        m_transfer->abort();
}

void clsDownload::wait(const std::function<void()>& pump) const
{
    while (Status == 1)
        pump();
}

std::string updateDescriptionUrl(const VendorAddresses& vendor)
{
    std::string base = vendor.updateServer;
    while (!base.empty() && base.back() == '/')
        base.pop_back();
    return base + "/update/quittung/webup.inf";
}

net::HttpGet updateDescriptionRequest(const VendorAddresses& vendor)
{
    net::HttpGet request{updateDescriptionUrl(vendor), {}, {}, 0};
    request.bodyLimit = kDescriptionLimit;
    return request;
}

UpdateOutcome UpdateCheck::take(const std::string& response, const std::filesystem::path& localCopy,
                                const std::string& installed)
{
    if (response.size() < 4)
        throw RunError::invalidCall();
    const std::string text = response.substr(4, kDescriptionLimit);
    // The copy's header takes the place of the four characters lost; it holds no line end, so the rounds of five
    // lines stay aligned.
    writeFileAtomically(localCopy, std::string("\x08\0\0\0", 4) + text);
    std::string copy;
    try {
        copy = readFileBytes(localCopy);
    } catch (...) {
        std::filesystem::remove(localCopy);
        throw;
    }
    std::filesystem::remove(localCopy);
    const auto lines = splitLines(copy);
    if (lines.size() % 5 != 0)
        throw RunError::inputPastEnd();
    for (std::size_t i = 0; i < lines.size(); ++i)
        captions[i % 5] += lines[i];
    const int order = captions[2].compare(installed);
    return order > 0 ? UpdateOutcome::Newer : order == 0 ? UpdateOutcome::Same : UpdateOutcome::Older;
}

std::string updateStatusText(UpdateOutcome outcome)
{
    switch (outcome) {
    case UpdateOutcome::Newer: return "Es ist eine neue Version vorhanden!";
    case UpdateOutcome::Same: return "Es ist kein neues Update verfügbar!";
    case UpdateOutcome::Older: break;
    }
    return {};
}

std::string installerName()
{
    return "zettelwerk_" + std::to_string(kVersionMajor) + "_" + std::to_string(kVersionMinor) + "_" +
           std::to_string(kVersionRevision) + ".exe";
}

std::filesystem::path renameInstaller(const std::filesystem::path& folder)
{
    const auto installer = folder / installerName();
    std::error_code error;
    if (std::filesystem::exists(installer, error))
        throw RunError::fileExists();
    std::filesystem::rename(folder / "zettelwerk.exe", installer, error);
    if (error)
        throw RunError::fileNotFound();
    return installer;
}

DownloadDisplay downloadDisplay(const clsDownload& download, const NumberSeparators& separators)
{
    DownloadDisplay shown;
    if (download.ErrorNumber != 0) {
        shown.status = "Status: Fehler " + std::to_string(download.ErrorNumber) + ", " + download.ErrorDescription;
        return shown;
    }
    shown.size = std::to_string(download.Size) + " Bytes";
    shown.received = std::to_string(download.ReceivedBytes) + " Bytes";
    shown.speed = formatted(download.Speed / 1024.0, separators, 2, true) + " KB/s";
    const double ratio = download.Size > 0 ? static_cast<double>(download.ReceivedBytes) / download.Size : 0.0;
    shown.status = "Status: Download läuft " + formatted(ratio * 100.0, separators, 1, false) + "% empfangen";
    shown.percent = static_cast<int>(std::lround(ratio * 100.0));
    return shown;
}

std::string downloadEndStatus(const clsDownload& download)
{
    if (download.ErrorNumber != 0)
        return downloadDisplay(download, {}).status;
    return "Status: Update ist runtergeladen!";
}

std::string updateStartQuestion()
{
    return "Das Update wurde runtergeladen.\rMöchten Sie dieses jetzt starten?\r\rWenn ja, dann wird das "
           "Programm\rbeendet und das Update geöffnet.";
}

std::string versionPageQuestion(const std::string& installed)
{
    return "Ihre aktuell verwendete Programmversion lautet: \r\r" + installed +
           "\r\rWenn Sie auf JA klicken, wird Ihnen auf unserer Internetseite\rdie aktuellste Version angezeigt. Ist "
           "diese Version\rneuer, als die von Ihnen verwendete, dann laden\rSie sich die neuste Version runter und "
           "installieren diese.";
}

void updaten(FormHost& host, const VendorAddresses& vendor, const std::function<void(const std::string& url)>& browse)
{
    // 68: yes and no with the information sign.
    if (host.messageBox(versionPageQuestion(versionText()), 68, "Online-Update") ==
        kAnswerYes)
        browse(vendor.versionPage);
}

} // namespace zw
