#include "survey/keys/ui/KeyFields.h"

#include "survey/keys/SecurityControlRules.h"
#include "ui_KeyFields.h"

#include <QEvent>

#include <algorithm>

namespace {

constexpr int maxWepKeyTextLength = 2 * maxWepKeySize; // hexadecimal digits
constexpr int hexadecimalFormat = 0;
constexpr char notAscii[] = "\xC3\xA9"; // a key with the longest hint

// Screen readers read the hint with its field.
void showHint(QLabel& label, QLineEdit& field, const QString& hint)
{
    label.setText(hint);
    field.setAccessibleDescription(hint);
}

} // namespace

KeyFields::KeyFields(QWidget* parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::KeyFields>())
{
    m_ui->setupUi(this);
    m_rows = { {
        { m_ui->WEPKey1Radio, m_ui->WEPKey1Combo, m_ui->WEPKey1Text, m_ui->WEPKey1Hint },
        { m_ui->WEPKey2Radio, m_ui->WEPKey2Combo, m_ui->WEPKey2Text, m_ui->WEPKey2Hint },
        { m_ui->WEPKey3Radio, m_ui->WEPKey3Combo, m_ui->WEPKey3Text, m_ui->WEPKey3Hint },
        { m_ui->WEPKey4Radio, m_ui->WEPKey4Combo, m_ui->WEPKey4Text, m_ui->WEPKey4Hint },
    } };
    reserveSpace();
    connectControls();
}

KeyFields::~KeyFields() = default;

// Reserves space for the longest key and hints, so that the sheet does not change its layout while the user types.
void KeyFields::reserveSpace()
{
    const QString widestKey(maxWepKeyTextLength + 4, u'0');
    const QString widestHint
        = wepKeyHint({ .formatIndex = hexadecimalFormat, .text = SecretText("0123456789"), .radioOn = true }, true);
    for (const Row& row : m_rows) {
        row.text->setMinimumWidth(fontMetrics().horizontalAdvance(widestKey));
        row.hint->setMinimumSize(fontMetrics().horizontalAdvance(widestHint), fontMetrics().height());
    }
    m_ui->WPAPreSharedKey->setMinimumWidth(fontMetrics().horizontalAdvance(widestKey));
    const QString widestPresharedKeyHint = presharedKeyHint(notAscii, m_keyUse);
    m_ui->WPAPreSharedKeyHint->setMinimumSize(
        fontMetrics().horizontalAdvance(widestPresharedKeyHint), fontMetrics().height());
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
        connect(row.text, &QLineEdit::textChanged, this, [this] { updateHints(); });
        connect(row.format, &ComboBox::currentIndexChanged, this, [this] { updateHints(); });
        connect(row.radio, &QRadioButton::toggled, this, [this] { updateHints(); });
    }
    connect(m_ui->WPAPreSharedKey, &QLineEdit::textChanged, this, [this] { updateHints(); });
    connect(m_ui->showKeys, &QCheckBox::toggled, this, [this](bool shown) { setKeysShown(shown); });
}

KeyControls KeyFields::keyControls(int authenTypeIndex, int encryTypeIndex) const
{
    return { authenTypeIndex, encryTypeIndex, wepKeyControlsOf(wepKeyRows()), keyBytesOf(WPAPSK()) };
}

std::array<WepKeyRow, wepKeyCount> KeyFields::wepKeyRows() const
{
    std::array<WepKeyRow, wepKeyCount> rows;
    std::transform(m_rows.begin(), m_rows.end(), rows.begin(), [](const Row& row) {
        return WepKeyRow { row.format->indexOfSelectedItem(), row.text->text(), row.radio->isChecked() };
    });
    return rows;
}

QString KeyFields::WPAPSK() const
{
    return m_ui->WPAPreSharedKey->text();
}

void KeyFields::enableFor(int authenTypeIndex, int encryTypeIndex)
{
    if (const auto enabled = keyFieldsEnabled(authenTypeIndex, encryTypeIndex)) {
        m_ui->presharedKeyLabel->setEnabled(enabled->presharedKey);
        m_ui->WPAPreSharedKey->setEnabled(enabled->presharedKey);
        for (const Row& row : m_rows) {
            row.radio->setEnabled(enabled->wepKeys);
            row.format->setEnabled(enabled->wepKeys);
            row.text->setEnabled(enabled->wepKeys);
        }
    }
    updateWepKeysVisible();
    updateHints();
}

void KeyFields::setUnusedWepKeysHidden(bool hidden)
{
    m_unusedWepKeysHidden = hidden;
    updateWepKeysVisible();
}

void KeyFields::updateWepKeysVisible()
{
    const bool unused = m_ui->WPAPreSharedKey->isEnabled() && !m_rows[0].text->isEnabled();
    m_ui->wepKeyGroup->setVisible(!m_unusedWepKeysHidden || !unused);
    updateGeometry(); // at once, for the sheet's new size
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

void KeyFields::setWPAPSK(const QString& text)
{
    m_ui->WPAPreSharedKey->setText(text);
}

void KeyFields::setKeyUse(KeyUse use)
{
    m_keyUse = use;
    m_ui->WPAPreSharedKey->setToolTip(use == KeyUse::Profile ? tr("A passphrase, or 64 hexadecimal digits")
                                                             : tr("A passphrase of 8 to 63 characters"));
    updateHints();
}

void KeyFields::selectHexadecimal()
{
    for (const Row& row : m_rows)
        row.format->selectItemAtIndex(hexadecimalFormat);
}

void KeyFields::clearTexts()
{
    m_ui->WPAPreSharedKey->clearSecret();
    for (const Row& row : m_rows)
        row.text->clearSecret();
}

void KeyFields::hideKeys()
{
    m_ui->showKeys->setChecked(false);
}

void KeyFields::setKeysShown(bool shown)
{
    m_ui->WPAPreSharedKey->setMasked(!shown);
    for (const Row& row : m_rows)
        row.text->setMasked(!shown);
}

bool KeyFields::focusFirstKey()
{
    SecretLineEdit* field = m_ui->WPAPreSharedKey;
    if (!field->isEnabled())
        field = m_rows[static_cast<std::size_t>(selectedKeyIndex(wepKeyControlsOf(wepKeyRows())))].text;
    if (!field->isEnabled())
        return false;
    field->setFocus();
    return true;
}

void KeyFields::focusRefusedKey(const KeyControls& controls)
{
    const auto wepKey = refusedWepKey(controls);
    SecretLineEdit* const field = wepKey ? m_rows[*wepKey].text : m_ui->WPAPreSharedKey;
    field->setFocus();
    field->selectAll();
}

void KeyFields::updateHints()
{
    const std::array<WepKeyControls, wepKeyCount> wepKeys = wepKeyControlsOf(wepKeyRows());
    const auto selected = static_cast<std::size_t>(selectedKeyIndex(wepKeys));
    for (std::size_t key = 0; key < m_rows.size(); ++key) {
        const bool inUse = m_rows[key].text->isEnabled();
        const QString hint = inUse ? wepKeyHint(wepKeys[key], key == selected) : QString();
        showHint(*m_rows[key].hint, *m_rows[key].text, hint);
    }
    const bool inUse = m_ui->WPAPreSharedKey->isEnabled();
    const QString hint = inUse ? presharedKeyHint(keyBytesOf(WPAPSK()).view(), m_keyUse) : QString();
    showHint(*m_ui->WPAPreSharedKeyHint, *m_ui->WPAPreSharedKey, hint);
}
