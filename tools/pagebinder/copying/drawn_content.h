#pragma once

#include "tools/pagebinder/copying/resource_use.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace tools {

/// Something with content of its own that other content draws: a form, a tiling pattern, a Type 3
/// font.
struct Drawing
{
    pdf_obj *object = nullptr; ///< its dictionary, resolved
    int stream = 0;            ///< number of its content; 0 for a font, which has many
};

/// Finds out which names the content of forms, patterns and Type 3 fonts uses that their own
/// resources do not list. Readers look for them in the resources of the content that draws them.
///
/// Everything is scanned at most once; loops of forms that draw each other end.
class DrawnContent
{
public:
    struct Name
    {
        ResourceKind kind;
        std::string text;
    };

    /// What is known of one drawing.
    struct Node
    {
        std::unique_ptr<ResourceUse> own; ///< null when it has no resources
        std::vector<Name> unlisted;       ///< names that those who draw it must provide
        bool isWhole = true; ///< its content and all that it draws could be read to the end

    private:
        friend class DrawnContent;
        /// The unlisted names, and who below needs each of them; the node itself, if its content
        /// does.
        std::unordered_map<std::string, std::unordered_set<Node *>> needs;
        std::vector<Node *> users;
        std::unordered_set<Node *> knownUsers;
        Drawing drawing;
    };

    explicit DrawnContent(PdfSource &source) : m_source(source) {}

    /// The node of @p drawing, complete.
    Node &look(const Drawing &drawing);
    /// The same if it has been looked at before, else null.
    Node *known(pdf_obj *object) const;

    /// Looks names up in @p use that @p drawing and what it draws do not list. What is found there
    /// is drawn inside the drawing, so it may in turn use what that one lists.
    /// @param isNew called for each entry that comes into use
    /// @returns the node of @p drawing, complete
    Node &provide(ResourceUse &use, const Drawing &drawing,
                  const std::function<void(ResourceKind, pdf_obj *)> &isNew);

    /// What the entry @p value of a resource dictionary draws, if anything.
    std::vector<Drawing> drawingsOf(ResourceKind kind, pdf_obj *value);
    /// The form behind @p value, if it is one.
    std::vector<Drawing> formOf(pdf_obj *value);

    /// Hands the names in the content of @p streams, one behind the other, to @p found as long as
    /// @p isWanted.
    /// @returns whether the content could be read to its end, as far as it was wanted
    bool scan(const std::vector<int> &streams, const ContentScanner::NameFound &found,
              const std::function<bool()> &isWanted);

    /// The numbers of the streams of @p drawing.
    std::vector<int> streamsOf(const Drawing &drawing);

private:
    struct Event
    {
        Node *node;
        Name name;
        Node *origin;
    };

    Node &open(const Drawing &drawing);
    void read(Node &node);
    void settle();
    void take(Node &node, ResourceKind kind, std::string_view name, Node &origin);
    void need(Node &node, ResourceKind kind, std::string_view name, Node &origin);
    void connect(Node &user, ResourceKind kind, pdf_obj *value);
    void connectBelow(Node &top, ResourceKind kind, std::string_view name, pdf_obj *value);
    void spoil(Node &node);

    PdfSource &m_source;
    std::unordered_map<pdf_obj *, std::unique_ptr<Node>> m_nodes;
    std::vector<Node *> m_unread;
    std::vector<Event> m_events;
};

} // namespace tools
