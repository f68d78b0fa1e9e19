#pragma once

#include <limits>
#include <type_traits>

#include "base/array.h"
#include "vg/entry/entry_checks.h"
#include "vg/param_values.h"

namespace vg {

/// Which values a parameter accepts.
struct AcceptedValues {
    static constexpr VGint kAnyCount = -1;

    VGint count = 1;  ///< how many; a scalar has one; -n: any multiple of n, for n above 1
    bool isVector = false;
    VGint least = std::numeric_limits<VGint>::min();  ///< of a scalar, as an integer
    VGint greatest = std::numeric_limits<VGint>::max();

    constexpr bool hasCount(VGint given) const noexcept {
        if (count == kAnyCount) return true;
        return count < 0 ? given % -count == 0 : given == count;
    }
};

inline constexpr AcceptedValues kAnyValue;
inline constexpr AcceptedValues kAnyVector = {AcceptedValues::kAnyCount, true};
inline constexpr AcceptedValues kVectorOfFours = {-4, true};
inline constexpr AcceptedValues kVectorOfFives = {-5, true};

constexpr AcceptedValues between(VGint least, VGint greatest) {
    return {1, false, least, greatest};
}
constexpr AcceptedValues vectorOf(VGint count) { return {count, true}; }

/// Moves a parameter's values into its owner and out of it. `store` gets accepted values only and
/// returns false, with nothing changed, when memory runs out; it is null when the parameter is
/// read-only. `load` puts all values; `size` counts them and is null for a fixed count.
template <class Owner>
struct ParamAccess {
    bool (*store)(Owner& owner, const ParamInput& input) noexcept;
    void (*load)(const Owner& owner, ParamOutput& output) noexcept;
    VGint (*size)(const Owner& owner) noexcept = nullptr;
};

/// Everything about one parameter: the row of a table that setters and getters share.
template <class Owner>
struct ParamRule {
    VGint type;
    AcceptedValues accepted;
    ParamAccess<Owner> access;

    bool accepts(const ParamInput& input) const noexcept {
        if (!input.isReadable() || !accepted.hasCount(input.count())) return false;
        if (accepted.isVector) return !input.isScalarCall();
        const VGint value = input.integerAt(0);
        return accepted.least <= value && value <= accepted.greatest;
    }

    VGint size(const Owner& owner) const noexcept {
        return access.size != nullptr ? access.size(owner) : accepted.count;
    }
};

// A field of the owner is named by the chain of member pointers that leads to it.

template <auto... kMembers, class Owner>
constexpr auto& memberOf(Owner& owner) noexcept {
    // clang-format off
    return (owner .* ... .* kMembers);
    // clang-format on
}

/// An integer, boolean or float, or an array of floats.
template <class Owner, auto... kMembers>
bool storeMember(Owner& owner, const ParamInput& input) noexcept {
    auto& member = memberOf<kMembers...>(owner);
    using Member = std::remove_reference_t<decltype(member)>;
    if constexpr (std::is_array_v<Member>) {
        for (VGint i = 0; i < input.count(); ++i) member[i] = input.floatAt(i);
    } else if constexpr (std::is_same_v<Member, float>) {
        member = input.floatAt(0);
    } else if constexpr (std::is_same_v<Member, bool>) {
        member = input.integerAt(0) != 0;
    } else {
        member = input.integerAt(0);
    }
    return true;
}

template <class Owner, auto... kMembers>
void loadMember(const Owner& owner, ParamOutput& output) noexcept {
    const auto& member = memberOf<kMembers...>(owner);
    using Member = std::remove_cvref_t<decltype(member)>;
    if constexpr (std::is_array_v<Member>) {
        output.put(member, static_cast<VGint>(std::extent_v<Member>));
    } else if constexpr (std::is_same_v<Member, bool>) {
        output.put(VGint{member});
    } else {
        output.put(member);
    }
}

/// Raises an error unless the rule exists and accepts the values. Retries once if memory runs out.
template <class Owner>
void setParam(Context& context, Owner& owner, const ParamRule<Owner>* rule,
              const ParamInput& input) noexcept {
    if (rule == nullptr || !rule->accepts(input)) return context.raise(VG_ILLEGAL_ARGUMENT_ERROR);
    const auto store = rule->access.store;
    if (store != nullptr) doOrRaise(context, [&] { return store(owner, input); });
}

/// Raises an error, and writes nothing, unless the rule exists and has as many values as asked for.
template <class Owner>
void getParam(Context& context, const Owner& owner, const ParamRule<Owner>* rule,
              ParamOutput output) noexcept {
    const bool isLegal = rule != nullptr && output.isWritable() &&
                         !(rule->accepted.isVector && output.isScalarCall()) &&
                         output.capacity() <= rule->size(owner);
    if (!isLegal) return context.raise(VG_ILLEGAL_ARGUMENT_ERROR);
    rule->access.load(owner, output);
}

/// 0, with an error raised, without a rule.
template <class Owner>
VGint paramSize(Context& context, const Owner& owner, const ParamRule<Owner>* rule) noexcept {
    if (rule != nullptr) return rule->size(owner);
    context.raise(VG_ILLEGAL_ARGUMENT_ERROR);
    return 0;
}

}  // namespace vg
