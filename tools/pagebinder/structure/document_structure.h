#pragma once

#include "tools/pagebinder/structure/parent_tree.h"
#include "tools/pagebinder/structure/structure_tree.h"

#include <memory>
#include <optional>

namespace tools {

/// A document's structure tags, read once for all outputs and only as far as they are asked for.
class DocumentStructure
{
public:
    explicit DocumentStructure(PdfSource &source)
        : m_source(source), m_texts(source), m_parents(source, m_texts)
    {
    }

    /// Whether the document is tagged.
    bool isThere()
    {
        if (!m_isThere) {
            m_isThere = StructureTree::isIn(m_source);
        }
        return *m_isThere;
    }

    ParentTree &parents() noexcept { return m_parents; }
    /// The tree as far as the parent tree leads to it.
    StructureTree &linked() { return made(m_linked); }
    /// The tree as a walk from its root finds it.
    StructureTree &walked()
    {
        StructureTree &tree = made(m_walked);
        if (!tree.isWalked()) {
            tree.walk();
        }
        return tree;
    }

    /// Lets go of most of what was read when it has become much.
    void forget()
    {
        if (m_linked) {
            m_linked->forget();
        }
    }

private:
    StructureTree &made(std::unique_ptr<StructureTree> &tree)
    {
        if (!tree) {
            tree = std::make_unique<StructureTree>(m_source, m_texts);
        }
        return *tree;
    }

    PdfSource &m_source;
    std::optional<bool> m_isThere;
    ObjectTexts m_texts;
    ParentTree m_parents;
    std::unique_ptr<StructureTree> m_linked;
    std::unique_ptr<StructureTree> m_walked;
};

} // namespace tools
