#include "phonetheme.h"

#include <QApplication>

namespace PhoneTheme {

QPalette palette()
{
    const QColor dark(10, 10, 10);
    const QColor panel(35, 35, 35);
    const QColor tile(46, 46, 46);
    const QColor text(230, 230, 230);
    QPalette p;
    p.setColor(QPalette::Window, dark);
    p.setColor(QPalette::WindowText, text);
    p.setColor(QPalette::Base, panel);
    p.setColor(QPalette::Text, text);
    p.setColor(QPalette::BrightText, QColor(255, 255, 255));
    p.setColor(QPalette::Light, QColor(85, 85, 85));
    p.setColor(QPalette::Midlight, QColor(70, 70, 70));
    p.setColor(QPalette::Mid, tile);
    p.setColor(QPalette::Dark, QColor(18, 18, 18));
    p.setColor(QPalette::Shadow, QColor(0, 0, 0));
    p.setColor(QPalette::Button, tile);
    p.setColor(QPalette::ButtonText, text);
    p.setColor(QPalette::AlternateBase, tile);
    p.setColor(QPalette::Highlight, QColor(0, 120, 170));
    p.setColor(QPalette::HighlightedText, QColor(255, 255, 255));
    p.setColor(QPalette::ToolTipBase, panel);
    p.setColor(QPalette::ToolTipText, text);
    p.setColor(QPalette::PlaceholderText, QColor(120, 120, 120));
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, QColor(110, 110, 110));
    return p;
}

QFont font()
{
    QFont f{QLatin1String(FontFamily)};
    f.setPointSize(14);
    return f;
}

void install()
{
    QApplication::setPalette(palette());
    QApplication::setFont(font());
}

} // namespace PhoneTheme
