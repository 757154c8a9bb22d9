#include "survey/keys/ui/KeyFields.h"

#include "survey/keys/KeyHints.h"
#include "survey/keys/SecurityControlRules.h"
#include "ui_KeyFields.h"

#include <QEvent>

#include <algorithm>

namespace {

constexpr int longestWepKeyText = 26; // hexadecimal digits
constexpr int hexadecimalFormat = 0;
constexpr char notAscii[] = "\xC3\xA9"; // a key of which the most is told

// To those who do not see the hint it is told with the field that it belongs to.
void showHint(QLabel& label, QLineEdit& field, const QString& hint)
{
    label.setText(hint);
    field.setAccessibleDescription(hint);
}

} // namespace

KeyFields::KeyFields(QWidget* parent)
    : QWidget(parent)
    , m_form(std::make_unique<Ui::KeyFields>())
{
    m_form->setupUi(this);
    m_rows = { {
        { m_form->WEPKey1Radio, m_form->WEPKey1Combo, m_form->WEPKey1Text, m_form->WEPKey1Hint },
        { m_form->WEPKey2Radio, m_form->WEPKey2Combo, m_form->WEPKey2Text, m_form->WEPKey2Hint },
        { m_form->WEPKey3Radio, m_form->WEPKey3Combo, m_form->WEPKey3Text, m_form->WEPKey3Hint },
        { m_form->WEPKey4Radio, m_form->WEPKey4Combo, m_form->WEPKey4Text, m_form->WEPKey4Hint },
    } };
    reserveSpace();
    connectControls();
}

KeyFields::~KeyFields() = default;

// The longest WEP key shows whole, and nothing in a sheet grows or moves by what is told of a key while it is typed.
void KeyFields::reserveSpace()
{
    const QString longestKey(longestWepKeyText + 4, u'0');
    const QString longestHint
        = wepKeyHint({ .formatIndex = hexadecimalFormat, .text = "0123456789", .radioOn = true }, true);
    for (const Row& row : m_rows) {
        row.text->setMinimumWidth(fontMetrics().horizontalAdvance(longestKey));
        row.hint->setMinimumSize(fontMetrics().horizontalAdvance(longestHint), fontMetrics().height());
    }
    const QString longestPresharedKeyHint = presharedKeyHint(notAscii);
    m_form->WPAPreSharedKeyHint->setMinimumSize(
        fontMetrics().horizontalAdvance(longestPresharedKeyHint), fontMetrics().height());
}

void KeyFields::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        reserveSpace();
}

void KeyFields::connectControls()
{
    for (const Row& row : m_rows) {
        connect(row.text, &QLineEdit::textChanged, this, [this] { showWhatIsMissing(); });
        connect(row.format, &ComboBox::currentIndexChanged, this, [this] { showWhatIsMissing(); });
        connect(row.radio, &QRadioButton::toggled, this, [this] { showWhatIsMissing(); });
    }
    connect(m_form->WPAPreSharedKey, &QLineEdit::textChanged, this, [this] { showWhatIsMissing(); });
    connect(m_form->showKeys, &QCheckBox::toggled, this, [this](bool shown) { setKeysShown(shown); });
}

KeyControls KeyFields::keyControls(int authenTypeIndex, int encryTypeIndex) const
{
    return { authenTypeIndex, encryTypeIndex, wepKeyControlsOf(wepKeyRows()), keyBytesOf(presharedKeyText()) };
}

std::array<WepKeyRow, 4> KeyFields::wepKeyRows() const
{
    std::array<WepKeyRow, 4> rows;
    std::transform(m_rows.begin(), m_rows.end(), rows.begin(), [](const Row& row) {
        return WepKeyRow { row.format->indexOfSelectedItem(), row.text->text(), row.radio->isChecked() };
    });
    return rows;
}

QString KeyFields::presharedKeyText() const
{
    return m_form->WPAPreSharedKey->text();
}

void KeyFields::enableFor(int authenTypeIndex, int encryTypeIndex)
{
    if (const auto enabled = keyFieldsEnabled(authenTypeIndex, encryTypeIndex)) {
        m_form->presharedKeyLabel->setEnabled(enabled->presharedKey);
        m_form->WPAPreSharedKey->setEnabled(enabled->presharedKey);
        for (const Row& row : m_rows) {
            row.radio->setEnabled(enabled->wepKeys);
            row.format->setEnabled(enabled->wepKeys);
            row.text->setEnabled(enabled->wepKeys);
        }
    }
    showWhatIsMissing();
}

void KeyFields::setWepKey(std::size_t key, int formatIndex, const QString& text)
{
    m_rows[key].format->selectItemAtIndex(formatIndex);
    m_rows[key].text->setText(text);
}

void KeyFields::selectTransmitKey(std::optional<std::size_t> key)
{
    if (key)
        m_rows[*key].radio->setChecked(true);
}

void KeyFields::setPresharedKey(const QString& text)
{
    m_form->WPAPreSharedKey->setText(text);
}

void KeyFields::selectHexadecimal()
{
    for (const Row& row : m_rows)
        row.format->selectItemAtIndex(hexadecimalFormat);
}

// A text that is set cannot be undone, and so no key of the network before be had back; clear could be.
void KeyFields::clearTexts()
{
    m_form->WPAPreSharedKey->setText(QString());
    for (const Row& row : m_rows)
        row.text->setText(QString());
}

void KeyFields::hideKeys()
{
    m_form->showKeys->setChecked(false);
}

void KeyFields::setKeysShown(bool shown)
{
    const auto echo = shown ? QLineEdit::Normal : QLineEdit::Password;
    m_form->WPAPreSharedKey->setEchoMode(echo);
    for (const Row& row : m_rows)
        row.text->setEchoMode(echo);
}

bool KeyFields::focusFirstKey()
{
    QLineEdit* field = m_form->WPAPreSharedKey;
    if (!field->isEnabled())
        field = m_rows[static_cast<std::size_t>(selectedKeyIndex(wepKeyControlsOf(wepKeyRows())))].text;
    if (!field->isEnabled())
        return false;
    field->setFocus();
    return true;
}

void KeyFields::showWhatIsMissing()
{
    const std::array<WepKeyControls, 4> wepKeys = wepKeyControlsOf(wepKeyRows());
    const auto selected = static_cast<std::size_t>(selectedKeyIndex(wepKeys));
    for (std::size_t key = 0; key < m_rows.size(); ++key) {
        const bool inUse = m_rows[key].text->isEnabled();
        const QString hint = inUse ? wepKeyHint(wepKeys[key], key == selected) : QString();
        showHint(*m_rows[key].hint, *m_rows[key].text, hint);
    }
    const bool inUse = m_form->WPAPreSharedKey->isEnabled();
    const QString hint = inUse ? presharedKeyHint(keyBytesOf(presharedKeyText())) : QString();
    showHint(*m_form->WPAPreSharedKeyHint, *m_form->WPAPreSharedKey, hint);
}
