#pragma once

#include "platform/ui/ComboBox.h"
#include "profiles/ProfileEditorRules.h"

#include <optional>

// The network name of a profile, typed or chosen from the names of the scan result. Limited to 32 bytes.
class SsidBox final : public ComboBox {
    Q_OBJECT

public:
    explicit SsidBox(QWidget* parent = nullptr);

    // Does not change the box without a selection.
    void showSelection(const std::optional<SsidSelection>& selection);
};
