#pragma once

#include "platform/store/SaveReport.h"
#include "platform/ui/AnnouncedLine.h"

#include <map>

// Names the files that could not be written, with the reason, until they are saved. Takes no space otherwise.
class SaveFailureLine final : public AnnouncedLine, public SaveReport {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SaveFailureLine)

public:
    explicit SaveFailureLine(QWidget* parent = nullptr);
    ~SaveFailureLine() override = default;

    void saveFailed(const QString& path, const QString& reason) override;
    void saveSucceeded(const QString& path) override;

private:
    void update();

    std::map<QString, QString> m_reasons; // by path
};
