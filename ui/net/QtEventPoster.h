#pragma once

#include "net/Transfer.h"

#include <QObject>

namespace zw {

// Runs transfer events on the thread that created the poster (the window's thread).
class QtEventPoster : public net::EventPoster {
public:
    void post(std::function<void()> event) override;

    // For routines that send and then go on: the window keeps turning until the transfer has finished.
    static void waitWhileLoopTurns(const net::Transfer& transfer);

private:
    QObject m_context;
};

} // namespace zw
