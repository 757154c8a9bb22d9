#pragma once

#include "tests/profiles/automatic/RecordedFile.h"
#include "tests/support/SimulatorThread.h"

#include <QDir>
#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// What outlasts the utility: its user's home, and a card that can be pulled.
struct SimulatedMachine {
    void eject()
    {
        simulator.run([this] { simulator.service().eject(); });
    }
    void insert()
    {
        simulator.run([this] { ASSERT_TRUE(simulator.service().insert()); });
    }

    void startRecording()
    {
        simulator.run([this] { ASSERT_TRUE(simulator.service().recorder().start(recording.toStdString())); });
    }
    // The names that the card was told to join since then.
    [[nodiscard]] std::vector<QString> namesSet() const { return namesSetIn(recordedIn(recording)); }

    // The same files under another name. Settings remember in the process what they have read of a file; a new run
    // has to read what the last one wrote.
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
