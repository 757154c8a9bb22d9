#pragma once

#include <QString>

// What to tell the user between a connection's being asked for and the link's coming up. Fed by the ticks of the site
// survey: it asks nothing of the driver.
class JoinProgress {
public:
    // A connection was queued. network is its name as it is shown, empty for one that sends none.
    void begin(const QString& network);
    // One tick: whether the link is up, as probed before the tick ran its task, and whether the connection still waits
    // in the queue behind other tasks.
    void tick(bool linkUp, bool stillQueued);
    // The card is gone, and with it what was asked of it.
    void reset();

    // Empty while there is nothing to tell.
    [[nodiscard]] QString text() const;

private:
    enum class State {
        Idle,
        Queued, // the link that is seen is the one of before, also in the tick that runs the task
        Waiting,
        Failed,
    };

    State m_state { State::Idle };
    QString m_network;
    int m_ticksWaited { 0 };
};
