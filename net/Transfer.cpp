#include "net/Transfer.h"

#include "app/AtomicFile.h"

#include <cerrno>
#include <cassert>
#include <condition_variable>
#include <curl/curl.h>
#include <deque>
#include <fcntl.h>
#include <mutex>
#include <set>
#include <strings.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace zw::net {

namespace {

void initCurlOnce()
{
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

void syncFolder(const std::filesystem::path& folder)
{
    const int fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

// curl's own texts are English; the user reads German, and the code stays in the result for a closer look.
std::string describe(const TransferResult& r)
{
    if (r.aborted)
        return "Die Übertragung wurde abgebrochen.";
    switch (r.curlCode) {
    case CURLE_OK:
        if (r.responseCode >= 400)
            return "Der Server meldet den Fehler " + std::to_string(r.responseCode) + ".";
        return "Die Übertragung ist abgeschlossen.";
    case CURLE_OPERATION_TIMEDOUT: return "Zeitüberschreitung: der Server antwortet nicht.";
    case CURLE_COULDNT_RESOLVE_HOST: return "Der Servername konnte nicht aufgelöst werden.";
    case CURLE_COULDNT_RESOLVE_PROXY: return "Der Name des Proxy-Servers konnte nicht aufgelöst werden.";
    case CURLE_COULDNT_CONNECT: return "Keine Verbindung zum Server möglich.";
    case CURLE_LOGIN_DENIED: return "Der Server hat die Anmeldung abgelehnt.";
    case CURLE_USE_SSL_FAILED:
        return "Der Server bietet keine verschlüsselte Verbindung an; ohne sie werden keine Zugangsdaten gesendet.";
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_ENGINE_NOTFOUND:
    case CURLE_SSL_ENGINE_SETFAILED:
    case CURLE_SSL_SHUTDOWN_FAILED:
    case CURLE_SSL_CRL_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
    case CURLE_SSL_INVALIDCERTSTATUS:
        return "Die verschlüsselte Verbindung zum Server ist gescheitert (Zertifikat nicht vertrauenswürdig oder "
               "TLS-Fehler).";
    case CURLE_SSL_CACERT_BADFILE:
        return "Die Zertifikate zur Prüfung des Servers konnten nicht gelesen werden.";
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
        return "Die Verbindung zum Server wurde unterbrochen.";
    case CURLE_UNSUPPORTED_PROTOCOL: return "Die Adresse nennt ein Protokoll, das nicht unterstützt wird.";
    case CURLE_URL_MALFORMAT: return "Die Adresse des Servers ist ungültig.";
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_HTTP2:
    case CURLE_HTTP2_STREAM:
    case CURLE_HTTP3:
        return "Der Server hat eine unverständliche Antwort gesendet.";
    case CURLE_PARTIAL_FILE: return "Der Server hat weniger Daten gesendet als angekündigt.";
    case CURLE_HTTP_RETURNED_ERROR: return "Der Server meldet einen Fehler.";
    case CURLE_WRITE_ERROR: return "Die empfangenen Daten konnten nicht gespeichert werden.";
    case CURLE_READ_ERROR: return "Die zu sendenden Daten konnten nicht gelesen werden.";
    case CURLE_UPLOAD_FAILED: return "Der Server hat die gesendeten Daten nicht angenommen.";
    case CURLE_OUT_OF_MEMORY: return "Für die Übertragung reicht der Speicher nicht.";
    case CURLE_TOO_MANY_REDIRECTS:
        return "Der Server leitet zu oft weiter (mehr als " + std::to_string(HttpGet::kMostRedirects) + " Mal).";
    case CURLE_BAD_CONTENT_ENCODING: return "Der Server sendet die Daten in einer unbekannten Kodierung.";
    case CURLE_FILESIZE_EXCEEDED: return "Die Datei ist größer als erlaubt.";
    case CURLE_REMOTE_ACCESS_DENIED: return "Der Server verweigert den Zugriff.";
    case CURLE_REMOTE_FILE_NOT_FOUND: return "Die Datei wurde auf dem Server nicht gefunden.";
    case CURLE_AUTH_ERROR: return "Die Anmeldung am Server ist gescheitert.";
    case CURLE_RECURSIVE_API_CALL:
    case CURLE_FAILED_INIT:
    case CURLE_NOT_BUILT_IN:
    case CURLE_BAD_FUNCTION_ARGUMENT:
    case CURLE_UNKNOWN_OPTION:
        return "Die Übertragung konnte nicht vorbereitet werden (Fehler " + std::to_string(r.curlCode) + ").";
    default:
        return "Übertragungsfehler " + std::to_string(r.curlCode) + ".";
    }
}

} // namespace

// The multi handle whose connection cache a session keeps, and every socket its connections opened, so an abort
// can cut them from the caller's thread.
struct Session::Pool {
    std::mutex mutex;
    CURLM* multi = nullptr;
    std::set<curl_socket_t> sockets;

    Pool()
    {
        initCurlOnce();
        multi = curl_multi_init();
    }
    ~Pool() { close(); }

    void wakeUp()
    {
        std::lock_guard lock(mutex);
        if (multi)
            curl_multi_wakeup(multi);
    }

    // The peer sees the connection end; curl sees a dead socket and neither says goodbye nor reuses it.
    void cutConnections()
    {
        std::lock_guard lock(mutex);
        for (curl_socket_t socket : sockets)
            ::shutdown(socket, SHUT_RDWR);
    }

    // QUIT for what is still open, but no longer than a moment: a server silent after it is cut off.
    void close()
    {
        CURLM* closing = nullptr;
        {
            std::lock_guard lock(mutex);
            std::swap(closing, multi);
        }
        if (!closing)
            return;
        std::mutex doneMutex;
        std::condition_variable doneSignal;
        bool done = false;
        std::thread closer([&] {
            curl_multi_cleanup(closing);
            std::lock_guard lock(doneMutex);
            done = true;
            doneSignal.notify_one();
        });
        {
            std::unique_lock lock(doneMutex);
            if (!doneSignal.wait_for(lock, std::chrono::seconds(1), [&] { return done; })) {
                lock.unlock();
                cutConnections();
            }
        }
        closer.join();
    }

    static curl_socket_t onOpenSocket(void* opaque, curlsocktype, curl_sockaddr* address)
    {
        auto* self = static_cast<Pool*>(opaque);
        const curl_socket_t socket = ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
        if (socket != CURL_SOCKET_BAD) {
            std::lock_guard lock(self->mutex);
            self->sockets.insert(socket);
        }
        return socket;
    }

    static int onCloseSocket(void* opaque, curl_socket_t socket)
    {
        auto* self = static_cast<Pool*>(opaque);
        std::lock_guard lock(self->mutex);
        self->sockets.erase(socket);
        return ::close(socket);
    }
};

Session::Session() : m_pool(std::make_shared<Pool>()) {}
Session::~Session() = default;

// Shared between the owner and posted events, so an event queued after the owner died does nothing.
struct Transfer::Impl {
    EventPoster& poster;
    TransferEvents events;
    std::shared_ptr<Session::Pool> pool;
    bool ownPool;
    std::thread worker;
    std::atomic<bool> running{false};
    std::atomic<bool> abortRequested{false};

    struct Delivered {
        bool alive = true;
        bool finished = false;
        TransferResult result;
        std::string body;
    };
    std::shared_ptr<Delivered> delivered = std::make_shared<Delivered>();

    // Worker-side state.
    CURL* easy = nullptr;
    std::string received;
    std::size_t bodyLimit = 0;
    bool limitReached = false;
    std::filesystem::path targetFile;
    std::string temporaryName;
    int file = -1;              // the temporary file beside targetFile, once the answer was taken
    bool answerChecked = false;
    bool answerRefused = false; // no 200 with a length: not one byte of it is counted or written
    bool fileFailed = false;
    std::int64_t written = 0;
    std::string upload;
    std::size_t uploadPos = 0;
    bool smtp = false;
    bool inAuth = false;
    bool quitting = false;
    std::string failingReply; // the last reply of 4xx or 5xx, what LastError quotes
    std::chrono::steady_clock::time_point lastProgress;

    Impl(EventPoster& p, TransferEvents e, Session* session)
        : poster(p), events(std::move(e)), pool(session ? session->m_pool : std::make_shared<Session::Pool>()),
          ownPool(session == nullptr)
    {
    }

    void post(std::function<void(TransferEvents&)> call)
    {
        auto target = delivered;
        auto* self = this;
        poster.post([target, self, call = std::move(call)] {
            if (target->alive)
                call(self->events);
        });
    }

    void postLine(std::string line)
    {
        if (events.transcript)
            post([line = std::move(line)](TransferEvents& e) { e.transcript(line); });
    }

    void noteSmtpLine(curl_infotype type, std::string& line)
    {
        if (type == CURLINFO_HEADER_OUT) {
            quitting = line.size() >= 4 && strncasecmp(line.c_str(), "QUIT", 4) == 0;
            // AUTH and the lines answering its challenges carry base64 credentials.
            if (line.size() >= 4 && strncasecmp(line.c_str(), "AUTH", 4) == 0) {
                inAuth = true;
                line = line.substr(0, line.find(' ', 5)) + " <verborgen>";
            } else if (inAuth) {
                line = "<verborgen>";
            }
            return;
        }
        if (inAuth && line.size() >= 3 && line[0] != '3')
            inAuth = false;
        // The goodbye's answer tells nothing about what failed before it.
        if (!inAuth && !quitting && (line[0] == '4' || line[0] == '5'))
            failingReply = line;
    }

    void logChunk(curl_infotype type, const char* data, std::size_t size)
    {
        if (type == CURLINFO_DATA_OUT || type == CURLINFO_DATA_IN) {
            postLine((type == CURLINFO_DATA_OUT ? "> " : "< ") + std::to_string(size) + " Bytes Daten");
            return;
        }
        if (type == CURLINFO_SSL_DATA_IN || type == CURLINFO_SSL_DATA_OUT)
            return;
        const char* prefix = type == CURLINFO_HEADER_OUT ? "> " : type == CURLINFO_HEADER_IN ? "< " : "* ";
        std::string text(data, size);
        std::size_t start = 0;
        while (start < text.size()) {
            std::size_t end = text.find('\n', start);
            if (end == std::string::npos)
                end = text.size();
            std::string line = text.substr(start, end - start);
            start = end + 1;
            if (!line.empty() && line.back() == '\r')
                line.pop_back();
            if (line.empty())
                continue;
            if (smtp && type != CURLINFO_TEXT)
                noteSmtpLine(type, line);
            postLine(prefix + line);
        }
    }

    static int onDebug(CURL*, curl_infotype type, char* data, size_t size, void* self)
    {
        static_cast<Impl*>(self)->logChunk(type, data, size);
        return 0;
    }

    // The first block of a download to a file decides: only a 200 that announces its length is written.
    bool takeAnswer()
    {
        long code = 0;
        curl_off_t length = -1;
        curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &code);
        curl_easy_getinfo(easy, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
        if (code != 200 || length <= 0) {
            answerRefused = true;
            return false;
        }
        try {
            file = createOwnTemporaryFile(targetFile, temporaryName, 0644);
        } catch (const std::exception&) {
            fileFailed = true;
            return false;
        }
        return true;
    }

    bool writeBlock(const char* data, std::size_t size)
    {
        while (size > 0) {
            const ssize_t done = ::write(file, data, size);
            if (done < 0 && errno == EINTR)
                continue;
            if (done <= 0) {
                fileFailed = true;
                return false;
            }
            data += done;
            size -= static_cast<std::size_t>(done);
            written += done;
        }
        return true;
    }

    // Renamed only when the whole answer arrived; anything else leaves no file behind.
    void finishFile(bool keep)
    {
        if (file < 0)
            return;
        if (keep && (::fsync(file) != 0 || ::rename(temporaryName.c_str(), targetFile.c_str()) != 0))
            fileFailed = true;
        if (!keep || fileFailed)
            ::unlink(temporaryName.c_str());
        ::close(file);
        file = -1;
        if (keep && !fileFailed)
            syncFolder(targetFile.parent_path());
    }

    // The HTTP body; for SMTP the answer to a command (the probe's NOOP), which must not reach standard output.
    static size_t onWrite(char* data, size_t size, size_t count, void* opaque)
    {
        auto* self = static_cast<Impl*>(opaque);
        const std::size_t bytes = size * count;
        if (self->smtp)
            return bytes;
        if (!self->targetFile.empty()) {
            if (!self->answerChecked) {
                self->answerChecked = true;
                if (!self->takeAnswer())
                    return 0;
            }
            return self->file >= 0 && self->writeBlock(data, bytes) ? bytes : 0;
        }
        if (self->bodyLimit > 0 && self->received.size() + bytes >= self->bodyLimit) {
            self->received.append(data, self->bodyLimit - self->received.size());
            self->limitReached = true;
            return 0; // ends the transfer; what arrived up to the limit is the whole answer
        }
        self->received.append(data, bytes);
        return bytes;
    }

    static size_t onRead(char* buffer, size_t size, size_t count, void* opaque)
    {
        auto* self = static_cast<Impl*>(opaque);
        const std::size_t n = std::min(size * count, self->upload.size() - self->uploadPos);
        self->upload.copy(buffer, n, self->uploadPos);
        self->uploadPos += n;
        return n;
    }

    static int onProgress(void* opaque, curl_off_t dlTotal, curl_off_t dlNow, curl_off_t ulTotal, curl_off_t ulNow)
    {
        auto* self = static_cast<Impl*>(opaque);
        if (self->abortRequested)
            return 1;
        const auto now = std::chrono::steady_clock::now();
        if (self->events.progress && now - self->lastProgress >= std::chrono::milliseconds(50)) {
            self->lastProgress = now;
            const std::int64_t done = self->smtp ? ulNow : self->targetFile.empty() ? dlNow : self->written;
            const std::int64_t total = self->smtp ? ulTotal : dlTotal;
            self->post([done, total](TransferEvents& e) { e.progress(done, total); });
        }
        return 0;
    }

    void run(CURL* easy)
    {
        CURLM* m = nullptr;
        {
            std::lock_guard lock(pool->mutex);
            m = pool->multi;
        }
        TransferResult r;
        if (m && curl_multi_add_handle(m, easy) == CURLM_OK) {
            int running = 1;
            while (running > 0 && !abortRequested) {
                curl_multi_perform(m, &running);
                if (running > 0)
                    curl_multi_poll(m, nullptr, 0, 200, nullptr);
            }
            int left = 0;
            while (CURLMsg* msg = curl_multi_info_read(m, &left))
                if (msg->msg == CURLMSG_DONE && msg->easy_handle == easy)
                    r.curlCode = msg->data.result;
        } else {
            r.curlCode = CURLE_FAILED_INIT;
        }
        if (limitReached && r.curlCode == CURLE_WRITE_ERROR)
            r.curlCode = CURLE_OK;
        r.aborted = abortRequested || r.curlCode == CURLE_ABORTED_BY_CALLBACK;
        r.timedOut = r.curlCode == CURLE_OPERATION_TIMEDOUT;
        curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &r.responseCode);
        curl_off_t announced = -1;
        if (!smtp && curl_easy_getinfo(easy, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &announced) == CURLE_OK)
            r.contentLength = announced;
        if (r.aborted)
            pool->cutConnections(); // an abort that came as the transfer ended still leaves nothing to reuse
        if (m)
            curl_multi_remove_handle(m, easy);
        curl_easy_cleanup(easy);
        if (ownPool)
            pool->close();

        if (answerRefused && r.curlCode == CURLE_WRITE_ERROR && r.responseCode >= 400)
            r.curlCode = CURLE_OK; // the server's error is the news, not the refusal
        finishFile(r.ok());
        if (events.progress && !r.aborted && r.ok()) {
            const auto size = static_cast<std::int64_t>(smtp ? upload.size() : targetFile.empty() ? received.size()
                                                                                               : written);
            post([size](TransferEvents& e) { e.progress(size, size); });
        }
        r.description = describe(r);
        if (smtp && r.curlCode == CURLE_SEND_ERROR && r.responseCode >= 500)
            r.description = "Der Server hat einen Empfänger oder die Nachricht abgelehnt.";
        if (answerRefused && r.curlCode == CURLE_WRITE_ERROR)
            r.description = "Der Server hat die Länge der Datei nicht angekündigt.";
        if (fileFailed) {
            r.curlCode = CURLE_WRITE_ERROR;
            r.description = "Die Datei " + targetFile.string() + " konnte nicht geschrieben werden.";
        }
        if (!r.aborted)
            r.serverReply = failingReply;
        running = false;
        auto target = delivered;
        auto* self = this;
        poster.post([target, self, r, body = std::move(received)]() mutable {
            if (!target->alive)
                return;
            target->result = r;
            target->body = std::move(body);
            target->finished = true;
            if (self->events.finished)
                self->events.finished(target->result);
        });
    }

    CURL* prepare(const std::string& url, const Timeouts& t)
    {
        initCurlOnce();
        easy = curl_easy_init();
        curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
        curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(t.connect.count()));
        curl_easy_setopt(easy, CURLOPT_LOW_SPEED_LIMIT, t.slowest);
        curl_easy_setopt(easy, CURLOPT_LOW_SPEED_TIME, static_cast<long>(t.silence.count()));
        curl_easy_setopt(easy, CURLOPT_VERBOSE, 1L);
        curl_easy_setopt(easy, CURLOPT_DEBUGFUNCTION, &Impl::onDebug);
        curl_easy_setopt(easy, CURLOPT_DEBUGDATA, this);
        curl_easy_setopt(easy, CURLOPT_NOPROGRESS, 0L);
        curl_easy_setopt(easy, CURLOPT_XFERINFOFUNCTION, &Impl::onProgress);
        curl_easy_setopt(easy, CURLOPT_XFERINFODATA, this);
        curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &Impl::onWrite);
        curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
        // The pool outlives this transfer, so a connection left in its cache may still close through it.
        curl_easy_setopt(easy, CURLOPT_OPENSOCKETFUNCTION, &Session::Pool::onOpenSocket);
        curl_easy_setopt(easy, CURLOPT_OPENSOCKETDATA, pool.get());
        curl_easy_setopt(easy, CURLOPT_CLOSESOCKETFUNCTION, &Session::Pool::onCloseSocket);
        curl_easy_setopt(easy, CURLOPT_CLOSESOCKETDATA, pool.get());
        return easy;
    }

    void launch(std::function<void()> work)
    {
        assert(!running && "one transfer at a time");
        running = true;
        worker = std::thread(std::move(work));
    }
};

Transfer::Transfer(EventPoster& poster, TransferEvents events, Session* session)
    : m_impl(std::make_unique<Impl>(poster, std::move(events), session))
{
}

Transfer::~Transfer()
{
    if (m_impl->running)
        abort();
    if (m_impl->worker.joinable())
        m_impl->worker.join();
    m_impl->delivered->alive = false;
}

void Transfer::start(HttpGet request)
{
    CURL* easy = m_impl->prepare(request.url, request.timeouts);
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(easy, CURLOPT_MAXREDIRS, HttpGet::kMostRedirects);
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    if (request.receiveBlock > 0)
        curl_easy_setopt(easy, CURLOPT_BUFFERSIZE, request.receiveBlock);
    m_impl->targetFile = request.targetFile;
    m_impl->bodyLimit = request.bodyLimit;
    m_impl->launch([impl = m_impl.get(), easy] { impl->run(easy); });
}

void Transfer::start(SmtpSend request)
{
    Impl& d = *m_impl;
    d.smtp = true;
    d.upload = std::move(request.message);
    CURL* easy = d.prepare(request.url, request.timeouts);
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "smtp,smtps");
    // Without it a server silent after the final "." is waited for two minutes.
    curl_easy_setopt(easy, CURLOPT_SERVER_RESPONSE_TIMEOUT, static_cast<long>(request.timeouts.silence.count()));
    if (!request.user.empty()) {
        curl_easy_setopt(easy, CURLOPT_USERNAME, request.user.c_str());
        curl_easy_setopt(easy, CURLOPT_PASSWORD, request.password.c_str());
    }
    if (request.probeOnly) {
        curl_easy_setopt(easy, CURLOPT_CUSTOMREQUEST, "NOOP");
    } else {
        curl_easy_setopt(easy, CURLOPT_MAIL_FROM, request.from.c_str());
    }
    if (request.tls != SmtpSend::Tls::Implicit)
        curl_easy_setopt(easy, CURLOPT_USE_SSL,
                         request.tls == SmtpSend::Tls::Required ? long{CURLUSESSL_ALL} : long{CURLUSESSL_TRY});
    if (!request.caFile.empty())
        curl_easy_setopt(easy, CURLOPT_CAINFO, request.caFile.c_str());
    curl_slist* rcpt = nullptr;
    for (const auto& r : request.recipients)
        rcpt = curl_slist_append(rcpt, r.c_str());
    if (!request.probeOnly) {
        curl_easy_setopt(easy, CURLOPT_MAIL_RCPT, rcpt);
        curl_easy_setopt(easy, CURLOPT_UPLOAD, 1L);
    }
    curl_easy_setopt(easy, CURLOPT_READFUNCTION, &Impl::onRead);
    curl_easy_setopt(easy, CURLOPT_READDATA, &d);
    curl_easy_setopt(easy, CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(d.upload.size()));
    // curl copies string options; the recipient list must outlive the transfer.
    d.launch([impl = &d, easy, rcpt] {
        impl->run(easy);
        curl_slist_free_all(rcpt);
    });
}

void Transfer::abort()
{
    if (!m_impl->running)
        return; // idle: a session's open connection stays usable
    m_impl->abortRequested = true;
    m_impl->pool->cutConnections();
    m_impl->pool->wakeUp();
}

bool Transfer::isFinished() const { return m_impl->delivered->finished; }
const TransferResult& Transfer::result() const { return m_impl->delivered->result; }
const std::string& Transfer::body() const { return m_impl->delivered->body; }

void Transfer::wait(const std::function<void()>& pumpEvents)
{
    while (!isFinished())
        pumpEvents();
}

struct QueuePoster::State {
    std::mutex mutex;
    std::condition_variable ready;
    std::deque<std::function<void()>> queue;
};

std::shared_ptr<QueuePoster::State> QueuePoster::makeState() { return std::make_shared<State>(); }

void QueuePoster::post(std::function<void()> event)
{
    {
        std::lock_guard lock(m_state->mutex);
        m_state->queue.push_back(std::move(event));
    }
    m_state->ready.notify_one();
}

void QueuePoster::pump(std::chrono::milliseconds maxWait)
{
    std::deque<std::function<void()>> batch;
    {
        std::unique_lock lock(m_state->mutex);
        m_state->ready.wait_for(lock, maxWait, [&] { return !m_state->queue.empty(); });
        batch.swap(m_state->queue);
    }
    for (auto& event : batch)
        event();
}

} // namespace zw::net
