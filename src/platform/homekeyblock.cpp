#include "homekeyblock.h"

#include <QDialog>
#include <QVariant>

namespace {
constexpr char property[] = "qtopia_homeKeyBlocked";
}

void setHomeKeyBlocked(QDialog *dialog, bool blocked)
{
    if (dialog)
        dialog->setProperty(property, blocked);
}

bool isHomeKeyBlocked(const QDialog *dialog)
{
    return dialog && dialog->property(property).toBool();
}
