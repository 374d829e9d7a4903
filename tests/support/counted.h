#pragma once

namespace dalvo::support {

/// What an instrumented operation throws when the fuse has burnt down.
struct Blown {};

/// Makes the n-th instrumented operation from now on throw Blown.
///
/// Example:
///     for (unsigned n = 1;; ++n) {
///         Fuse::set(n);
///         try { work(); break; } catch (const Blown &) { /* look at the state */ }
///     }
///     Fuse::put_out();
class Fuse {
public:
    /// `steps` is at least 1: the first operation throws.
    static void set(unsigned steps) noexcept { left = steps; }

    /// Nothing throws any more.
    static void put_out() noexcept { left = 0; }

    static void step()
    {
        if (left != 0 && --left == 0) {
            throw Blown();
        }
    }

private:
    inline static unsigned left = 0; // 0: put out
};

/// A number whose copies and live instances are counted, for each `Tag` apart. Default construction and copying are
/// steps of the fuse; there is no moving and no assigning.
template <class Tag> class Counted {
public:
    Counted() : number(0)
    {
        Fuse::step();
        ++alive;
    }

    explicit Counted(int n) noexcept : number(n) { ++alive; }

    Counted(const Counted &other) : number(other.number)
    {
        Fuse::step();
        ++copies;
        ++alive;
    }

    Counted &operator=(const Counted &) = delete;

    ~Counted()
    {
        if (self != this) {
            ++displaced;
        }
        self = nullptr;
        --alive;
    }

    friend bool operator==(const Counted &a, const Counted &b) noexcept { return a.number == b.number; }

    int number;

    inline static int alive = 0;
    inline static int copies = 0;
    inline static int displaced = 0; // ended twice, or elsewhere than they were made

private:
    const Counted *self = this;
};

} // namespace dalvo::support
