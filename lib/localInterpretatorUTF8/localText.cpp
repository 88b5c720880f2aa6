#include "localText.h"

const std::u16string &localText::str() const
{
    static const std::u16string nothing;
    if (shared == nullptr)
        return nothing;
    if (start != 0 || length != shared->data.size()) {
        block *own = new block;
        own->data.assign(shared->data, start, length);
        if (--shared->links == 0)
            delete shared;
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
    std::u16string copy;
    copy.reserve(length + tail.size());
    copy.append(data, start, length);
    copy.append(tail.data(), tail.size());
    return localText(std::move(copy));
}
