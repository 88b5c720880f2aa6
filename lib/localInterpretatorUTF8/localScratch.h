// Working objects lent for the length of one call and given back on return.
// The scanners re-enter themselves for every bracket, argument and call, and
// each level needs a name buffer or an argument vector of its own; lending
// them from a shelf keeps their capacity from one evaluation to the next, so
// a running loop does not allocate them again on every round.
#ifndef LOCALSCRATCH_H
#define LOCALSCRATCH_H

#include <cstddef>
#include <memory>
#include <vector>

template <typename T>
class localScratch {
public:
    localScratch() : shelfOfThread(shelf())
    {
        if (shelfOfThread.lent == shelfOfThread.items.size())
            shelfOfThread.items.emplace_back(new T());
        item = shelfOfThread.items[shelfOfThread.lent++].get();
    }
    ~localScratch() { --shelfOfThread.lent; }
    localScratch(const localScratch &) = delete;
    localScratch &operator=(const localScratch &) = delete;

    // Holds what the previous borrower left: clear it before use.
    T &operator*() const { return *item; }
    T *operator->() const { return item; }

private:
    // Lent strictly last-out-first-in, since borrowers are scoped; one shelf
    // per thread, since a paused debugger run keeps its loans while the main
    // thread evaluates.
    struct shelfType {
        std::vector<std::unique_ptr<T>> items;
        size_t lent = 0;
    };
    static shelfType &shelf()
    {
        thread_local shelfType perThread;
        return perThread;
    }

    shelfType &shelfOfThread;
    T *item = nullptr;
};

#endif
