#pragma once

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <stdexcept>
#include <thread>
#include <string>
#include <vector>

namespace zw::test {

// One peer process of peer.py; stopped when the test ends.
class Peer {
public:
    explicit Peer(std::vector<std::string> args)
    {
        int out[2];
        if (pipe(out) != 0)
            throw std::runtime_error("pipe");
        m_pid = fork();
        if (m_pid == 0) {
            dup2(out[1], 1);
            close(out[0]);
            std::vector<char*> argv{const_cast<char*>("/usr/bin/python3"), const_cast<char*>(ZW_NET_PEER)};
            for (auto& a : args)
                argv.push_back(a.data());
            argv.push_back(nullptr);
            execv(argv[0], argv.data());
            _exit(127);
        }
        close(out[1]);
        std::string line;
        char c;
        while (read(out[0], &c, 1) == 1 && c != '\n')
            line += c;
        close(out[0]);
        m_port = line.empty() ? 0 : std::stoi(line);
    }
    ~Peer()
    {
        kill(m_pid, SIGTERM);
        waitpid(m_pid, nullptr, 0);
    }
    std::string url(const std::string& scheme, const std::string& path = "") const
    {
        return scheme + "://127.0.0.1:" + std::to_string(m_port) + path;
    }
    int port() const { return m_port; }

private:
    pid_t m_pid = -1;
    int m_port = 0;
};

// Polls `condition` until it holds, ten seconds at most, for what a peer notes in its own time.
inline bool waitUntil(const std::function<bool()>& condition)
{
    for (int i = 0; i < 500 && !condition(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    return condition();
}

} // namespace zw::test
