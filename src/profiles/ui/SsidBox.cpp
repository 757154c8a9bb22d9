#include "profiles/ui/SsidBox.h"

#include "platform/NetworkName.h"
#include "platform/ui/NetworkNameDelegate.h"
#include "profiles/ui/SsidValidator.h"

#include <QLineEdit>

SsidBox::SsidBox(QWidget* parent)
    : ComboBox(parent)
{
    setEditable(true);
    setAccessibleName(tr("SSID"));
    QLineEdit& field = *lineEdit();
    field.setAccessibleName(accessibleName());
    field.setValidator(new SsidValidator(&field));
    // Keep a typed name as typed: completion could replace it with another network's name, and on losing focus the box
    // would select an entry that reads the same.
    setCompleter(nullptr);
    QObject::disconnect(&field, &QLineEdit::editingFinished, this, nullptr);
    setItemDelegate(new NetworkNameDelegate(NetworkName::hiddenPlaceholder(), this));
}

void SsidBox::showSelection(const std::optional<SsidSelection>& selection)
{
    if (!selection)
        return;
    selectItemAtIndex(selection->index);
    setEditText(selection->text);
}
