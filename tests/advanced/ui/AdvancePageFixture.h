#pragma once

#include "advanced/ui/AdvancePageController.h"
#include "platform/store/PropertyListFile.h"
#include "platform/ui/ComboBox.h"
#include "platform/ui/ImageView.h"
#include "tests/advanced/CardFixture.h"
#include "tests/support/RecordingSaveReport.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>

// What Apply sends in addition to its two queries: the mode and the configuration only if they differ from the
// driver's, and no rates if a failed assertion ends it.
struct SentByApply {
    std::optional<std::int32_t> mode {};
    std::optional<VX_802_11_STA_CONFIG> configuration {};
    std::optional<NDIS_802_11_RATES> rates {};
};

// All requests of one Apply, in order.
inline Requests expectedApply(const SentByApply& sent)
{
    Requests requests { query(VX_OID_802_11_PHY_MODE, 4) };
    if (sent.mode)
        requests.push_back(set(VX_OID_802_11_PHY_MODE, *sent.mode));
    requests.push_back(query(VX_OID_802_11_STA_CONFIG, 32));
    if (sent.configuration)
        requests.push_back(set(VX_OID_802_11_STA_CONFIG, *sent.configuration));
    if (sent.rates)
        requests.push_back(set(OID_802_11_DESIRED_RATES, *sent.rates));
    return requests;
}

// A page with its own home directory. A test first writes the settings file that it needs, then opens the page.
class AdvancePageFixture : public CardFixture {
protected:
    [[nodiscard]] QString settingsFile() const { return advancedSettingsPath(home.path()); }

    // Writes a settings file with one record.
    void store(int rate, int protection, int burst, int adhocOfdm, int mode)
    {
        ASSERT_TRUE(writeDictionariesFile(settingsFile(), oneRecord(rate, protection, burst, adhocOfdm, mode)));
    }

    [[nodiscard]] static PropertyDictionary record(int rate, int protection, int burst, int adhocOfdm, int mode)
    {
        const auto text = [](int number) { return QString::number(number); };
        return { { u"Tx Rate"_qs, text(rate) }, { u"BG Protection"_qs, text(protection) },
            { u"Tx Burst"_qs, text(burst) }, { u"Ad Hoc Use OFDM"_qs, text(adhocOfdm) },
            { u"Wireless Mode"_qs, text(mode) } };
    }

    [[nodiscard]] static PropertyDictionaries oneRecord(int rate, int protection, int burst, int adhocOfdm, int mode)
    {
        return { record(rate, protection, burst, adhocOfdm, mode) };
    }

    [[nodiscard]] PropertyDictionaries stored() const { return readDictionariesFile(settingsFile()); }

    void open()
    {
        page = std::make_unique<AdvancePageController>(adapter, alerts, assertions, saves, home.path());
        page->awakeFromNib();
        page->show();
    }

    template <typename Control> [[nodiscard]] Control& control(const char16_t* name) const
    {
        return *page->findChild<Control*>(QStringView(name).toString());
    }
    [[nodiscard]] ComboBox& list(const char16_t* name) const { return control<ComboBox>(name); }
    [[nodiscard]] QPushButton& button(const char16_t* name) const { return control<QPushButton>(name); }
    [[nodiscard]] QCheckBox& check(const char16_t* name) const { return control<QCheckBox>(name); }

    [[nodiscard]] std::vector<QString> items(const char16_t* name) const
    {
        std::vector<QString> items;
        for (int index = 0; index < list(name).numberOfItems(); ++index)
            items.push_back(list(name).itemObjectValueAtIndex(index));
        return items;
    }
    [[nodiscard]] QString rateText() const { return list(u"TXrate").objectValueOfSelectedItem(); }

    // Selects an item with the arrow keys, passing over the items in between.
    void choose(const char16_t* name, int index)
    {
        ComboBox& box = list(name);
        while (box.indexOfSelectedItem() != index) {
            const int before = box.indexOfSelectedItem();
            QTest::keyClick(&box, before < index ? Qt::Key_Down : Qt::Key_Up);
            ASSERT_NE(box.indexOfSelectedItem(), before);
        }
    }
    // Selects an item directly in the drop-down list.
    void chooseInPopup(const char16_t* name, int index)
    {
        ComboBox& box = list(name);
        box.showPopup();
        box.view()->setCurrentIndex(box.model()->index(index, 0));
        QTest::keyClick(box.view(), Qt::Key_Return);
        ASSERT_EQ(box.indexOfSelectedItem(), index);
    }
    // Clicks near the left edge: a check box reacts only on its box and its text.
    void click(const char16_t* name)
    {
        auto& button = control<QAbstractButton>(name);
        QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(button.height() / 2, button.height() / 2));
    }
    // Applies the settings and returns the requests.
    [[nodiscard]] Requests apply()
    {
        registry.forgetCalls();
        traces = standardErrorOf([this] { page->OnApply(); });
        return requests();
    }

    [[nodiscard]] bool buttonsAreEnabled() const
    {
        EXPECT_EQ(button(u"Apply").isEnabled(), button(u"Reset").isEnabled());
        return button(u"Apply").isEnabled();
    }

    // The state of the controls.
    struct Shown {
        int mode;
        int rate;
        int protection;
        bool burst;
        bool adhocOfdm;
        bool operator==(const Shown&) const = default;
    };
    [[nodiscard]] Shown shown() const
    {
        return { list(u"WirelessMode").indexOfSelectedItem(), list(u"TXrate").indexOfSelectedItem(),
            list(u"BGprotection").indexOfSelectedItem(), check(u"EnableTXburst").isChecked(),
            check(u"AdhocModeUseOFDMrate").isChecked() };
    }

    QTemporaryDir home;
    RecordingSaveReport saves;
    std::unique_ptr<AdvancePageController> page;
    std::string traces; // of the last apply()
};
