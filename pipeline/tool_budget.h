#pragma once

namespace quorlin {

/// How many tools may run at the same time. Whoever starts one takes a place and gives it back.
class ToolBudget
{
public:
    /// @param count places in all, at least one
    explicit ToolBudget(int count) : freePlaces(count) {}

    /// Takes a place; false when none is free.
    bool tryTake()
    {
        if (freePlaces <= 0) {
            return false;
        }
        --freePlaces;
        return true;
    }
    void giveBack() { ++freePlaces; }

private:
    int freePlaces;
};

} // namespace quorlin
