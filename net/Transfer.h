#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zw::net {

// Carries a callable to the caller's thread (the window's event loop, or a queue a test pumps).
class EventPoster {
public:
    virtual ~EventPoster() = default;
    virtual void post(std::function<void()> event) = 0;
};

struct TransferResult {
    int curlCode = -1;    // CURLcode; 0 is success of the transport
    long responseCode = 0; // HTTP status or last SMTP reply code
    bool aborted = false;
    bool timedOut = false;
    std::string description; // German, for the user
    std::string serverReply; // the server's last reply line, if any (SMTP)
    std::int64_t contentLength = -1; // what the server announced (HTTP); -1 when it did not
    bool ok() const { return curlCode == 0 && !aborted && (responseCode < 400); }
};

struct Timeouts {
    std::chrono::milliseconds connect{15000};
    // Fewer than `slowest` bytes a second for this long ends the transfer; for SMTP it is also the longest wait
    // for one reply of the server.
    std::chrono::seconds silence{30};
    long slowest = 1024;
};

struct HttpGet {
    static constexpr long kMostRedirects = 5;
    std::string url;
    // Empty: keep the body in memory (Transfer::body()). Else the body goes block by block into a temporary file
    // beside it, which is synced and renamed onto it once the whole answer arrived; only a 200 answer that
    // announces its length is written, anything else is refused before its first byte is counted.
    std::filesystem::path targetFile;
    Timeouts timeouts;
    long receiveBlock = 0; // largest piece read at once; 0 leaves curl's own
    std::size_t bodyLimit = 0; // in memory: reading stops after this many bytes and the transfer ends as complete
};

struct SmtpSend {
    // Opportunistic: STARTTLS when the server offers it; Required: STARTTLS or nothing is sent; Implicit: smtps.
    enum class Tls { Opportunistic, Required, Implicit };
    std::string url; // smtp://host:port or smtps://host:port
    std::string user;
    std::string password;
    std::string from;
    std::vector<std::string> recipients; // To, Cc and Bcc alike
    std::string message;                 // complete RFC 5322 message, CRLF line ends
    Timeouts timeouts;
    Tls tls = Tls::Opportunistic;
    std::string caFile;     // a certificate authority to trust instead of the system store (tests)
    bool probeOnly = false; // greeting, STARTTLS and login, then NOOP: is the account usable?
};

struct TransferEvents {
    std::function<void(std::int64_t now, std::int64_t total)> progress; // total 0 when unknown
    std::function<void(const std::string& line)> transcript;
    std::function<void(const TransferResult&)> finished;
};

// Connections that outlive one transfer: a transfer started in a session reuses the connection an earlier one of
// the session left open, so the probe of Connect and the mail after it are one SMTP session. Ending the session
// says goodbye (QUIT) but waits for it no longer than a moment; an abort of one of its transfers closes the
// connection at once, without a goodbye, and the session is not used again.
class Session {
public:
    Session();
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    struct Pool;

private:
    friend class Transfer;
    std::shared_ptr<Pool> m_pool;
};

// One transfer on its own worker thread; every event runs through the poster, never on the worker. Without a
// session the transfer's connection ends with it.
class Transfer {
public:
    Transfer(EventPoster& poster, TransferEvents events, Session* session = nullptr);
    ~Transfer(); // aborts a running transfer and joins

    void start(HttpGet request);
    void start(SmtpSend request);
    void abort(); // ends a running transfer at once, its connection closed unsaid; finished() reports aborted

    bool isFinished() const; // true once finished() has been delivered
    const TransferResult& result() const;
    const std::string& body() const; // HTTP body kept in memory

    // Command line: waits for the end, pumping the given step (e.g. a queue) between waits.
    void wait(const std::function<void()>& pumpEvents);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

// For a synchronous caller without a loop of its own: events run on the calling thread while it waits.
class QueuePoster : public EventPoster {
public:
    void post(std::function<void()> event) override;
    void pump(std::chrono::milliseconds maxWait); // runs what is queued, waiting up to maxWait for the first

private:
    struct State;
    std::shared_ptr<State> m_state = makeState();
    static std::shared_ptr<State> makeState();
};

} // namespace zw::net
