#include "localText.h"

namespace {
// Blocks whose room is at most this many characters are kept for reuse, at
// most this many of them: enough for the texts that live between two
// statements, bounded so that a long text's room is given back.
constexpr size_t spareRoom = 64;
constexpr size_t spareCount = 256;
} // namespace

// The store is plain thread storage that is never destroyed, so that texts
// ended after it at the exit of a thread or the process (those of static
// compiled code) find it still readable: the closing guard empties it and
// from then on blocks go straight back to the heap.
namespace {
thread_local void *spareBlocks[spareCount];
thread_local size_t spareHeld = 0;
thread_local bool sparesClosed = false;
} // namespace

struct localTextSpares {
    localTextSpares() { sparesClosed = false; }
    ~localTextSpares()
    {
        sparesClosed = true;
        while (spareHeld > 0)
            delete static_cast<localText::block *>(spareBlocks[--spareHeld]);
    }
};

namespace {
thread_local localTextSpares sparesGuard;
}

localText::block *localText::blockTake()
{
    if (spareHeld == 0)
        return new block;
    block *taken = static_cast<block *>(spareBlocks[--spareHeld]);
    taken->links = 1;
    taken->frozen = false;
    taken->data.clear();
    return taken;
}

void localText::blockGive(block *given)
{
    if (given->data.capacity() > spareRoom || spareHeld == spareCount || sparesClosed) {
        delete given;
        return;
    }
    if (spareHeld == 0)
        (void)&sparesGuard; // made on this thread's first kept block, so that it closes the store
    spareBlocks[spareHeld++] = given;
}

const std::u16string &localText::str() const
{
    static const std::u16string nothing;
    if (shared == nullptr)
        return nothing;
    if (start != 0 || length != shared->data.size()) {
        block *own = blockTake();
        own->data.assign(shared->data, start, length);
        if (--shared->links == 0)
            blockGive(shared);
        shared = own;
        start = 0;
    }
    shared->frozen = true;
    return shared->data;
}

localText localText::joined(std::u16string_view tail) const
{
    if (tail.empty())
        return *this;
    if (shared == nullptr)
        return localText(tail);
    std::u16string &data = shared->data;
    const bool inside = tail.data() >= data.data() && tail.data() < data.data() + data.size();
    if (!shared->frozen && !inside && start + length == data.size()) {
        data.append(tail.data(), tail.size());
        localText longer(*this);
        longer.length += tail.size();
        return longer;
    }
    localText copy;
    copy.shared = blockTake();
    copy.shared->data.reserve(length + tail.size());
    copy.shared->data.append(data, start, length);
    copy.shared->data.append(tail.data(), tail.size());
    copy.length = copy.shared->data.size();
    return copy;
}
