#include "vg/object_handles.h"

#include <gtest/gtest.h>

#include <vector>

namespace vg {
namespace {

int alive = 0;

struct Counted final : Object {
    explicit Counted(ObjectKind objectKind) noexcept : Object(objectKind) { ++alive; }
    ~Counted() override { --alive; }
};

constexpr uint32_t kContextId = 63;

struct Handles : testing::Test {
    Handles() { EXPECT_TRUE(table.initialize()); }
    VGHandle add(ObjectKind kind = ObjectKind::kPaint) {
        return table.add(new Counted(kind), kContextId);
    }
    ObjectTable table;
};

TEST_F(Handles, FindTheirObjectByContextAndKind) {
    const VGHandle handle = add(ObjectKind::kPath);
    EXPECT_EQ(handle, kContextId << 26 | 1);
    EXPECT_NE(table.find(handle, kContextId, ObjectKind::kPath), nullptr);
    EXPECT_EQ(table.find(handle, kContextId, ObjectKind::kPaint), nullptr);
    EXPECT_EQ(table.find(handle, 0, ObjectKind::kPath), nullptr);
    for (const VGHandle bad :
         {0U, kContextId << 26, handle + 1, 0xFFFFFFFFU, handle & 0x3FFFFFFU}) {
        EXPECT_EQ(table.find(bad, kContextId, ObjectKind::kPath), nullptr) << bad;
    }
}

TEST_F(Handles, OfPathsAndImagesCountWhileTheyCanBeReferredTo) {
    for (const ObjectKind kind : {ObjectKind::kPath, ObjectKind::kImage, ObjectKind::kPaint}) {
        const VGHandle handle = add(kind);
        Object* object = table.find(handle, kContextId, kind);
        object->references = 0xFFFFFFFF;
        EXPECT_EQ(table.find(handle, kContextId, kind) != nullptr, kind == ObjectKind::kPaint);
        object->references = 1;
        EXPECT_EQ(table.find(handle, kContextId, kind), object);
    }
}

TEST_F(Handles, FreedEntriesComeBackLastFreedFirst) {
    std::vector<VGHandle> handles;
    for (int i = 0; i < 1000; ++i) handles.push_back(add());
    EXPECT_EQ(alive, 1000);
    for (const size_t i : {size_t{10}, size_t{999}, size_t{0}}) {
        table.remove(handles[i]);
        EXPECT_EQ(table.find(handles[i], kContextId, ObjectKind::kPaint), nullptr);
    }
    EXPECT_EQ(alive, 997);
    EXPECT_EQ(add(), handles[0]);
    EXPECT_EQ(add(), handles[999]);
    EXPECT_EQ(add(), handles[10]);
    EXPECT_EQ(add(), handles[999] + 1);
}

TEST(HandleTable, ReleasesWhatIsLeftAndSparesWhatIsStillReferenced) {
    auto* kept = new Counted(ObjectKind::kPaint);
    {
        ObjectTable table;
        ASSERT_TRUE(table.initialize());
        table.add(kept, 0);
        table.add(new Counted(ObjectKind::kPath), 0);
        retain(kept);
    }
    EXPECT_EQ(alive, 1);
    release(kept);
    EXPECT_EQ(alive, 0);
    retain(nullptr);
    release(nullptr);
}

}  // namespace
}  // namespace vg
