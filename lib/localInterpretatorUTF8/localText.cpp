#include "localText.h"

#include <vector>

namespace {
// Blocks whose room is at most this many characters are kept for reuse, at
// most this many of them: enough for the texts that live between two
// statements, bounded so that a long text's room is given back.
constexpr size_t spareRoom = 64;
constexpr size_t spareCount = 256;
} // namespace

struct localTextSpares {
    std::vector<void *> blocks;
    ~localTextSpares();
};

namespace {
thread_local localTextSpares spares;
}

localTextSpares::~localTextSpares()
{
    for (void *spare : blocks)
        delete static_cast<localText::block *>(spare);
}

localText::block *localText::blockTake()
{
    if (spares.blocks.empty())
        return new block;
    block *taken = static_cast<block *>(spares.blocks.back());
    spares.blocks.pop_back();
    taken->links = 1;
    taken->frozen = false;
    taken->data.clear();
    return taken;
}

void localText::blockGive(block *given)
{
    if (given->data.capacity() <= spareRoom && spares.blocks.size() < spareCount)
        spares.blocks.push_back(given);
    else
        delete given;
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
