#pragma once

#include "tests/support/SimulatorThread.h"
#include "tests/support/application/RecordedFile.h"

#include <QDir>
#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// What outlives a run of the utility: the user's home directory and a removable card.
struct SimulatedMachine {
    void eject()
    {
        simulator.run([this] { simulator.service().eject(); });
    }
    void insert()
    {
        simulator.run([this] { ASSERT_EQ(simulator.service().insert(), std::error_code()); });
    }

    void startRecording()
    {
        simulator.run(
            [this] { ASSERT_EQ(simulator.service().recorder().start(recording.toStdString()), std::error_code()); });
    }
    // The SSIDs that were set since startRecording().
    [[nodiscard]] std::vector<QString> ssidsSet() const { return ssidsSetIn(recordedIn(recording)); }

    // Renames the home directory. QSettings caches files by path within a process, and a new run has to read them
    // again.
    void moveHome()
    {
        const QString moved = home + u"-moved"_qs;
        ASSERT_TRUE(QDir().rename(home, moved));
        home = moved;
    }

    QTemporaryDir folder;
    QString home { folder.filePath(u"home"_qs) };
    QString recording { folder.filePath(u"requests"_qs) };
    SimulatorThread simulator;
};
