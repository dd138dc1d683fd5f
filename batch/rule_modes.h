#pragma once

namespace quorlin::batch {

struct Session;

// The modes that show pages and rules or change rules. Each does its work, prints what there is to
// say and gives the exit status.

int listRules(Session &session);
int listItems(Session &session);
/// Saves, removes, renames, exports or imports rules, as the arguments say.
int changeRules(Session &session);

} // namespace quorlin::batch
