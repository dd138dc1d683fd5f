#pragma once

#include "tools/pagexport/text/item_builder.h"

#include <QString>
#include <QStringList>

#include <string_view>

namespace quorlin::test {

/// Size of the letters, in points.
inline constexpr double em = 10;

/// Draws text glyph by glyph, each half an em wide, and gives the items that result.
class DrawnPage
{
public:
    DrawnPage() { m_builder.setStyle(tools::TextStyle::fromMatrix(em, 0, 0, -em, false)); }

    DrawnPage &at(double x, double y)
    {
        m_x = x;
        m_y = y;
        return *this;
    }
    DrawnPage &draw(const QString &text, double gap = 0)
    {
        for (const uint code : text.toUcs4()) {
            const int codes[] = {static_cast<int>(code)};
            const tools::Letters letters = tools::Letters::of(codes, 1);
            m_builder.add({m_x, m_y, em / 2, 0, &letters});
            m_x += em / 2 + gap;
        }
        return *this;
    }
    /// Draws letters that the file itself sets apart by @p gap.
    DrawnPage &drawSpaced(const QString &text, double gap)
    {
        for (const uint code : text.toUcs4()) {
            const int codes[] = {static_cast<int>(code)};
            const tools::Letters letters = tools::Letters::of(codes, 1);
            m_builder.add({m_x, m_y, em / 2, gap, &letters});
            m_x += em / 2 + gap;
        }
        return *this;
    }
    /// Draws a sign without width at @p x, the pen stays.
    DrawnPage &mark(double x, const QString &sign)
    {
        const int codes[] = {static_cast<int>(sign.toUcs4().first())};
        const tools::Letters letters = tools::Letters::of(codes, 1);
        m_builder.add({x, m_y, 0, 0, &letters});
        return *this;
    }
    DrawnPage &drawSmall(const QString &letter, double advance)
    {
        const int codes[] = {static_cast<int>(letter.toUcs4().first())};
        const tools::Letters letters = tools::Letters::of(codes, 1);
        m_builder.add({m_x, m_y, advance, 0, &letters});
        return *this;
    }
    /// The font's blank is @p ems wide.
    DrawnPage &blank(double ems)
    {
        tools::TextStyle style = tools::TextStyle::fromMatrix(em, 0, 0, -em, false);
        style.blank = ems;
        m_builder.setStyle(style);
        return *this;
    }
    DrawnPage &style(double a, double b, double c, double d, bool vertical = false)
    {
        m_builder.setStyle(tools::TextStyle::fromMatrix(a, b, c, d, vertical));
        return *this;
    }
    QStringList texts()
    {
        m_builder.endItem();
        QStringList result;
        for (const tools::TextItem &item : m_items.items) {
            const std::string_view text = m_items.text(item);
            result.append(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
        }
        return result;
    }
    tools::TextItem item(std::size_t index = 0)
    {
        m_builder.endItem();
        return m_items.items.at(index);
    }

private:
    tools::TextItems m_items;
    tools::ItemBuilder m_builder{m_items, 595, 842};
    double m_x = 100;
    double m_y = 100;
};

} // namespace quorlin::test
