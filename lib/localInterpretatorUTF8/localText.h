// The text of a value: a range of a block that is shared by every value
// copied from it or cut out of it, and that only ever grows at its end.
#ifndef LOCALTEXT_H
#define LOCALTEXT_H

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

// Copies share the block, and a part is the same block with another range,
// so passing, assigning and cutting a text cost a constant. A block's
// characters never change once written: joining a text that ends where its
// block ends writes behind it, which no range of the block sees, so a text
// built piece by piece grows in place in amortised linear time.
//
// A block handed out as a whole std::u16string is frozen: a reference to it
// may be held while a program runs, and growing the block in place could
// move its characters from under that reference. Joining onto a frozen
// block copies.
class localText {
public:
    localText() = default;
    localText(const std::u16string &text) { adopt(std::u16string_view(text)); }
    localText(std::u16string &&text) { adopt(std::move(text)); }
    localText(const char16_t *text) { adopt(std::u16string_view(text)); }
    explicit localText(std::u16string_view text) { adopt(text); }
    localText(const localText &other) : shared(other.shared), start(other.start), length(other.length)
    {
        if (shared != nullptr)
            ++shared->links;
    }
    localText(localText &&other) noexcept : shared(other.shared), start(other.start), length(other.length)
    {
        other.shared = nullptr;
        other.start = other.length = 0;
    }
    localText &operator=(const localText &other)
    {
        if (other.shared != nullptr)
            ++other.shared->links;
        release();
        shared = other.shared;
        start = other.start;
        length = other.length;
        return *this;
    }
    localText &operator=(localText &&other) noexcept
    {
        swap(other);
        return *this;
    }
    localText &operator=(const std::u16string &text) { return *this = localText(text); }
    localText &operator=(std::u16string &&text) { return *this = localText(std::move(text)); }
    localText &operator=(const char16_t *text) { return *this = localText(text); }
    ~localText() { release(); }

    size_t size() const { return length; }
    bool empty() const { return length == 0; }
    char16_t operator[](size_t index) const { return shared->data[start + index]; }
    std::u16string_view view() const
    {
        return shared == nullptr ? std::u16string_view() : std::u16string_view(shared->data.data() + start, length);
    }
    // The text as a string of its own, for what needs one: the block itself
    // when the text is all of it, else a block of its own cut out first.
    operator const std::u16string &() const { return str(); }
    const std::u16string &str() const;

    [[gnu::always_inline]] void clear() { release(); }
    void swap(localText &other) noexcept
    {
        std::swap(shared, other.shared);
        std::swap(start, other.start);
        std::swap(length, other.length);
    }
    // `count` characters from `from`, both already within the text.
    localText part(size_t from, size_t count) const
    {
        localText cut(*this);
        cut.start += from;
        cut.length = count;
        return cut;
    }
    // This text followed by `tail`.
    localText joined(std::u16string_view tail) const;
    localText &operator+=(std::u16string_view tail) { return *this = joined(tail); }
    localText &operator+=(const localText &tail) { return *this = joined(tail.view()); }
    localText &operator+=(const char16_t *tail) { return *this = joined(tail); }
    void assign(const std::u16string &text, size_t from, size_t count) { *this = localText(text.substr(from, count)); }

    // A text that is never grown in place, for the literals that compiled
    // code keeps: a text built on one would keep its block growing for as
    // long as the code lives.
    static localText kept(const std::u16string &text)
    {
        localText made(text);
        made.str();
        return made;
    }

    // Whether the two share a block, for tests and the memory dump's checks.
    bool sharesWith(const localText &other) const { return shared != nullptr && shared == other.shared; }

private:
    friend struct localTextSpares;
    struct block {
        uint32_t links = 1;
        bool frozen = false;
        std::u16string data;
    };
    // Blocks come from and go back to a small store of this thread's, so
    // that the many short texts of a running program reuse their room as
    // the strings of reused cells did.
    static block *blockTake();
    static void blockGive(block *given);
    void adopt(std::u16string &&text)
    {
        if (text.empty())
            return;
        shared = blockTake();
        if (text.size() <= shared->data.capacity())
            shared->data.assign(text);
        else
            shared->data = std::move(text);
        length = shared->data.size();
    }
    void adopt(std::u16string_view text)
    {
        if (text.empty())
            return;
        shared = blockTake();
        shared->data.assign(text.data(), text.size());
        length = text.size();
    }
    // Inline: every cell handed out again passes here, most with no block.
    [[gnu::always_inline]] void release()
    {
        if (shared != nullptr) {
            if (--shared->links == 0)
                blockGive(shared);
            shared = nullptr;
            start = length = 0;
        }
    }

    mutable block *shared = nullptr;
    mutable size_t start = 0;
    size_t length = 0;
};

inline bool operator==(const localText &a, const localText &b) { return a.view() == b.view(); }
inline bool operator!=(const localText &a, const localText &b) { return a.view() != b.view(); }
inline bool operator<(const localText &a, const localText &b) { return a.view() < b.view(); }
inline bool operator>(const localText &a, const localText &b) { return a.view() > b.view(); }
inline bool operator<=(const localText &a, const localText &b) { return a.view() <= b.view(); }
inline bool operator>=(const localText &a, const localText &b) { return a.view() >= b.view(); }
inline bool operator==(const localText &a, const std::u16string &b) { return a.view() == std::u16string_view(b); }
inline bool operator!=(const localText &a, const std::u16string &b) { return a.view() != std::u16string_view(b); }
inline bool operator==(const localText &a, const char16_t *b) { return a.view() == std::u16string_view(b); }
inline bool operator!=(const localText &a, const char16_t *b) { return a.view() != std::u16string_view(b); }

#endif
