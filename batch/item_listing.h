#pragma once

#include "analysis/subtext.h"
#include "pipeline/page_items.h"

#include <QList>
#include <QString>

namespace quorlin::batch {

/// Gathers all items of a page.
class ItemGatherer : public TextRule
{
public:
    void takeItem(ItemFields fields) override;
    std::optional<QString> endPage() override { return std::nullopt; }

    const QList<Subtext> &items() const { return gathered; }

private:
    QList<Subtext> gathered;
};

/// The items of page @p page of @p file as a JSON text.
QString itemsAsJson(const QList<Subtext> &items, const QString &file, int page);

/// The items as lines for a reader and for scripts: left, top, width, height in columns of seven
/// characters, two blanks, the text to the line's end. A heading comes first.
QString itemTable(const QList<Subtext> &items);

} // namespace quorlin::batch
