#include "api/packing/skyline.h"

#include <algorithm>
#include <cstring>

namespace quor::packing {

bool Skyline::reset(const Size& area) noexcept {
    // Steps are at least a pixel wide, and a cover inserts one more before it joins.
    if (!steps_.resize(area.width + 3)) return false;
    area_ = area;
    stepCount_ = 1;
    steps_[0] = {0, 0};
    steps_[1] = {area.width, area.height};
    return true;
}

Skyline::Gap Skyline::lowest() const noexcept {
    int step = 0;
    for (int i = 1; i < stepCount_; ++i) {
        if (steps_[i].y < steps_[step].y) step = i;
    }
    const auto [x, y] = steps_[step];
    const int left = step > 0 ? steps_[step - 1].y : area_.height;
    const int right = steps_[step + 1].y;  // the sentinel has the height of the area
    return {step, x, y, endOf(step) - x, left - y, right - y};
}

void Skyline::cover(const Gap& gap, const Size& size, bool atLeft) noexcept {
    const int top = gap.y + size.height;
    int covered = gap.step;
    if (size.width < gap.width) {
        if (atLeft) {
            insert(gap.step, {gap.x, top});
            steps_[gap.step + 1].x = gap.x + size.width;
        } else {
            covered = gap.step + 1;
            insert(covered, {gap.x + gap.width - size.width, top});
        }
    } else {
        steps_[covered].y = top;
    }
    join(covered);
}

int64_t Skyline::raise(const Gap& gap) noexcept {
    const int rise = std::min(gap.leftWall, gap.rightWall);
    steps_[gap.step].y += rise;
    join(gap.step);
    return int64_t{gap.width} * rise;
}

void Skyline::insert(int step, Step inserted) noexcept {
    std::memmove(&steps_[step] + 1, &steps_[step],
                 sizeof(Step) * static_cast<size_t>(stepCount_ + 1 - step));
    steps_[step] = inserted;
    ++stepCount_;
}

void Skyline::remove(int step) noexcept {
    std::memmove(&steps_[step], &steps_[step] + 1,
                 sizeof(Step) * static_cast<size_t>(stepCount_ - step));
    --stepCount_;
}

void Skyline::join(int step) noexcept {
    if (step + 1 < stepCount_ && steps_[step + 1].y == steps_[step].y) remove(step + 1);
    if (step > 0 && steps_[step - 1].y == steps_[step].y) remove(step);
}

}  // namespace quor::packing
