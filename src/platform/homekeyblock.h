#pragma once

class QDialog;

// The device's Home key leaves any window unless it is blocked for that dialog.
// QDialog cannot grow a member here, so the mark is a property of the dialog.
void setHomeKeyBlocked(QDialog *dialog, bool blocked);
bool isHomeKeyBlocked(const QDialog *dialog);
