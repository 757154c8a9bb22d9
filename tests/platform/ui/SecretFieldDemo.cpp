#include "platform/ui/SecretLineEdit.h"

#include <QApplication>
#include <QPushButton>
#include <QVBoxLayout>

// A window with one key field, for a test that listens on the accessibility bus. The argument is the stored key.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Vantrel"));
    const QString storedKey = QApplication::arguments().value(1);

    QWidget window;
    SecretLineEdit field;
    QPushButton open(QStringLiteral("Open profile"));
    QPushButton clear(QStringLiteral("Clear key"));
    QPushButton show(QStringLiteral("Show key"));
    field.setAccessibleName(QStringLiteral("Key"));
    QObject::connect(&open, &QPushButton::clicked, &field, [&] { field.setText(storedKey); });
    QObject::connect(&clear, &QPushButton::clicked, &field, &SecretLineEdit::clearSecret);
    QObject::connect(&show, &QPushButton::clicked, &field, [&] { field.setMasked(!field.isMasked()); });

    QVBoxLayout layout(&window);
    layout.addWidget(&field);
    for (QPushButton* button : { &open, &clear, &show })
        layout.addWidget(button);
    field.setFocus();
    window.show();
    return QApplication::exec();
}
