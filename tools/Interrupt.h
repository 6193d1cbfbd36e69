#pragma once

namespace zw::cli {

// Ctrl-C during a long command (a mail, a download): while one of these lives, SIGINT only raises a flag that the
// command's wait loop reads and answers with its Abort, so the transfer ends as the window's Abort ends it. A
// second Ctrl-C ends the program the usual way.
class InterruptWatch
{
public:
    InterruptWatch();
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    bool requested() const;

    // The exit status of a command that ended on Ctrl-C, as the shell reports a program the signal ended.
    static constexpr int kExitStatus = 130;
};

} // namespace zw::cli
