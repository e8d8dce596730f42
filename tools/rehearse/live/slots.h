// The numbers of the show's code, in the library that a rehearsal loads: each stands where it is written, and
// may be told another value.
#pragma once

#include <cstring>
#include <span>
#include <type_traits>

namespace live {

// One number of a source.
struct Slot {
    double value;                 // as its text has it, or as it was turned
    bool turnable;                // some constant is made of it at any time, not by the compiler alone
    mutable bool whole = false;   // what is made of it is an integer
    mutable bool single = false;  // or a float

    template <class T>
    requires std::is_arithmetic_v<T>
    operator T() const {
        whole = whole || std::is_integral_v<T>;
        single = single || std::is_same_v<T, float>;
        return T(value);
    }
};

struct Source {
    const char* path;  // as "effects/robo.cpp"
    const char* text;  // that was compiled
    Slot* slots;       // in the order of namedNumbers
    bool* ran;         // whether each of its functions was called, since someone has cleared that
};

// Computes constants anew from the numbers, and from one another, in the order in which they are written.
struct Renewal {
    void (*renew)();
    Renewal* next = nullptr;

    explicit Renewal(void (*renew)());
};
inline Renewal* firstRenewal = nullptr;
inline Renewal** endOfRenewals = &firstRenewal;

inline Renewal::Renewal(void (*renew)()) : renew(renew) {
    *endOfRenewals = this;
    endOfRenewals = &next;
}

inline void renewAll() {
    for (const Renewal* renewal = firstRenewal; renewal; renewal = renewal->next) renewal->renew();
}

template <class T>
void put(T& place, const T& fresh) {
    static_assert(std::is_trivially_copyable_v<T>);
    std::memcpy(static_cast<void*>(&place), &fresh, sizeof place);
}

}  // namespace live
