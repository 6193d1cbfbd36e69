#include "net/Transfer.h"

#include "app/AtomicFile.h"

#include <condition_variable>
#include <curl/curl.h>
#include <deque>
#include <mutex>
#include <strings.h>
#include <thread>

namespace zw::net {

namespace {

void initCurlOnce()
{
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

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
    case CURLE_COULDNT_CONNECT: return "Keine Verbindung zum Server möglich.";
    case CURLE_LOGIN_DENIED: return "Der Server hat die Anmeldung abgelehnt.";
    case CURLE_USE_SSL_FAILED:
        return "Der Server bietet keine verschlüsselte Verbindung an; ohne sie werden keine Zugangsdaten gesendet.";
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
        return "Die verschlüsselte Verbindung zum Server ist gescheitert (Zertifikat nicht vertrauenswürdig oder "
               "TLS-Fehler).";
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
        return "Die Verbindung zum Server wurde unterbrochen.";
    default:
        return "Übertragungsfehler " + std::to_string(r.curlCode) + ": " +
               curl_easy_strerror(static_cast<CURLcode>(r.curlCode));
    }
}

} // namespace

// Shared between the owner and posted events, so an event queued after the owner died does nothing.
struct Transfer::Impl {
    EventPoster& poster;
    TransferEvents events;
    std::thread worker;
    std::atomic<bool> abortRequested{false};
    std::mutex multiMutex;
    CURLM* multi = nullptr;

    struct Delivered {
        bool alive = true;
        bool finished = false;
        TransferResult result;
        std::string body;
    };
    std::shared_ptr<Delivered> delivered = std::make_shared<Delivered>();

    // Worker-side state.
    std::string received;
    std::string upload;
    std::size_t uploadPos = 0;
    bool smtp = false;
    bool inAuth = false;
    std::string lastReply;
    std::chrono::steady_clock::time_point lastProgress;

    Impl(EventPoster& p, TransferEvents e) : poster(p), events(std::move(e)) {}

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
            if (smtp && type == CURLINFO_HEADER_OUT) {
                // AUTH and the lines answering its challenges carry base64 credentials.
                if (line.size() >= 4 && strncasecmp(line.c_str(), "AUTH", 4) == 0) {
                    inAuth = true;
                    line = line.substr(0, line.find(' ', 5)) + " <verborgen>";
                } else if (inAuth) {
                    line = "<verborgen>";
                }
            } else if (smtp && type == CURLINFO_HEADER_IN && inAuth && line.size() >= 3 && line[0] != '3') {
                inAuth = false;
            }
            if (smtp && type == CURLINFO_HEADER_IN && !inAuth)
                lastReply = line;
            postLine(prefix + line);
        }
    }

    static int onDebug(CURL*, curl_infotype type, char* data, size_t size, void* self)
    {
        static_cast<Impl*>(self)->logChunk(type, data, size);
        return 0;
    }

    static size_t onWrite(char* data, size_t size, size_t count, void* self)
    {
        static_cast<Impl*>(self)->received.append(data, size * count);
        return size * count;
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
            const std::int64_t done = self->smtp ? ulNow : dlNow;
            const std::int64_t total = self->smtp ? ulTotal : dlTotal;
            self->post([done, total](TransferEvents& e) { e.progress(done, total); });
        }
        return 0;
    }

    void run(CURL* easy, const std::filesystem::path& targetFile)
    {
        CURLM* m = curl_multi_init();
        {
            std::lock_guard lock(multiMutex);
            multi = m;
        }
        curl_multi_add_handle(m, easy);
        int running = 1;
        while (running > 0 && !abortRequested) {
            curl_multi_perform(m, &running);
            if (running > 0)
                curl_multi_poll(m, nullptr, 0, 200, nullptr);
        }
        TransferResult r;
        int left = 0;
        while (CURLMsg* msg = curl_multi_info_read(m, &left))
            if (msg->msg == CURLMSG_DONE)
                r.curlCode = msg->data.result;
        r.aborted = abortRequested || r.curlCode == CURLE_ABORTED_BY_CALLBACK;
        r.timedOut = r.curlCode == CURLE_OPERATION_TIMEDOUT;
        curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &r.responseCode);
        curl_off_t announced = -1;
        if (!smtp && curl_easy_getinfo(easy, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &announced) == CURLE_OK)
            r.contentLength = announced;
        curl_multi_remove_handle(m, easy);
        curl_easy_cleanup(easy);
        {
            std::lock_guard lock(multiMutex);
            multi = nullptr;
        }
        curl_multi_cleanup(m);

        if (events.progress && !r.aborted && r.curlCode == CURLE_OK) {
            const auto size = static_cast<std::int64_t>(smtp ? upload.size() : received.size());
            post([size](TransferEvents& e) { e.progress(size, size); });
        }
        r.description = describe(r);
        if (smtp && r.curlCode == CURLE_SEND_ERROR && r.responseCode >= 500)
            r.description = "Der Server hat einen Empfänger oder die Nachricht abgelehnt.";
        r.serverReply = lastReply;
        if (r.ok() && !targetFile.empty()) {
            try {
                writeFileAtomically(targetFile, received);
            } catch (const std::exception&) {
                r.curlCode = CURLE_WRITE_ERROR;
                r.description = "Die Datei " + targetFile.string() + " konnte nicht geschrieben werden.";
            }
            received.clear();
        }
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
        CURL* easy = curl_easy_init();
        curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
        curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(t.connect.count()));
        curl_easy_setopt(easy, CURLOPT_LOW_SPEED_LIMIT, 1L);
        curl_easy_setopt(easy, CURLOPT_LOW_SPEED_TIME, static_cast<long>(t.silence.count()));
        curl_easy_setopt(easy, CURLOPT_VERBOSE, 1L);
        curl_easy_setopt(easy, CURLOPT_DEBUGFUNCTION, &Impl::onDebug);
        curl_easy_setopt(easy, CURLOPT_DEBUGDATA, this);
        curl_easy_setopt(easy, CURLOPT_NOPROGRESS, 0L);
        curl_easy_setopt(easy, CURLOPT_XFERINFOFUNCTION, &Impl::onProgress);
        curl_easy_setopt(easy, CURLOPT_XFERINFODATA, this);
        return easy;
    }
};

Transfer::Transfer(EventPoster& poster, TransferEvents events)
    : m_impl(std::make_unique<Impl>(poster, std::move(events)))
{
}

Transfer::~Transfer()
{
    abort();
    if (m_impl->worker.joinable())
        m_impl->worker.join();
    m_impl->delivered->alive = false;
}

void Transfer::start(HttpGet request)
{
    CURL* easy = m_impl->prepare(request.url, request.timeouts);
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &Impl::onWrite);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, m_impl.get());
    if (request.receiveBlock > 0)
        curl_easy_setopt(easy, CURLOPT_BUFFERSIZE, request.receiveBlock);
    m_impl->worker = std::thread([impl = m_impl.get(), easy, target = request.targetFile] { impl->run(easy, target); });
}

void Transfer::start(SmtpSend request)
{
    Impl& d = *m_impl;
    d.smtp = true;
    d.upload = std::move(request.message);
    CURL* easy = d.prepare(request.url, request.timeouts);
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
    d.worker = std::thread([impl = &d, easy, rcpt] {
        impl->run(easy, {});
        curl_slist_free_all(rcpt);
    });
}

void Transfer::abort()
{
    m_impl->abortRequested = true;
    std::lock_guard lock(m_impl->multiMutex);
    if (m_impl->multi)
        curl_multi_wakeup(m_impl->multi);
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
