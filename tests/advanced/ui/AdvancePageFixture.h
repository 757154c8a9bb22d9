#pragma once

#include "advanced/ui/AdvancePageController.h"
#include "platform/store/PropertyListFile.h"
#include "platform/ui/ComboBox.h"
#include "platform/ui/ImageView.h"
#include "tests/advanced/CardFixture.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

// The page over a home folder of its own. A test writes the settings file that it needs before it opens the page.
class AdvancePageFixture : public CardFixture {
protected:
    [[nodiscard]] QString settingsFile() const { return advancedSettingsPath(home.path()); }

    // A settings file with one record: rate, protection, burst, OFDM in ad hoc networks, mode.
    void store(int rate, int protection, int burst, int adhocOfdm, int mode)
    {
        ASSERT_TRUE(writeDictionariesFile(settingsFile(), { record(rate, protection, burst, adhocOfdm, mode) }));
    }

    [[nodiscard]] static PropertyDictionary record(int rate, int protection, int burst, int adhocOfdm, int mode)
    {
        const auto text = [](int number) { return QString::number(number); };
        return { { u"Tx Rate"_qs, text(rate) }, { u"BG Protection"_qs, text(protection) },
            { u"Tx Burst"_qs, text(burst) }, { u"Ad Hoc Use OFDM"_qs, text(adhocOfdm) },
            { u"Wireless Mode"_qs, text(mode) } };
    }

    [[nodiscard]] PropertyDictionaries stored() const { return readDictionariesFile(settingsFile()); }

    void open()
    {
        page = std::make_unique<AdvancePageController>(adapter, alerts, assertions, home.path());
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

    [[nodiscard]] std::vector<QString> rateItems() const
    {
        std::vector<QString> items;
        for (int index = 0; index < list(u"TXrate").numberOfItems(); ++index)
            items.push_back(list(u"TXrate").itemObjectValueAtIndex(index));
        return items;
    }

    // As a user does it, with the arrow keys. Passes over the items between.
    void choose(const char16_t* name, int index)
    {
        ComboBox& box = list(name);
        while (box.indexOfSelectedItem() != index) {
            const int before = box.indexOfSelectedItem();
            QTest::keyClick(&box, before < index ? Qt::Key_Down : Qt::Key_Up);
            ASSERT_NE(box.indexOfSelectedItem(), before);
        }
    }
    // In one step, from the list that drops down.
    void chooseAtOnce(const char16_t* name, int index)
    {
        ComboBox& box = list(name);
        box.showPopup();
        box.view()->setCurrentIndex(box.model()->index(index, 0));
        QTest::keyClick(box.view(), Qt::Key_Return);
        ASSERT_EQ(box.indexOfSelectedItem(), index);
    }
    // Near its front: a check box takes clicks where it has its mark and its text.
    void click(const char16_t* name)
    {
        auto& button = control<QAbstractButton>(name);
        QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(button.height() / 2, button.height() / 2));
    }
    // The requests of one Apply.
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

    // What the controls show.
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
    std::unique_ptr<AdvancePageController> page;
    std::string traces; // what the last apply() wrote
};
