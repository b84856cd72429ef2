// Drives the engine and a plain std::map model with the same random moves,
// seeks and edits, and compares them after every step.

#include "oxdm/common/values/io_status.h"
#include "store_fixture.h"

#include <limits>
#include <map>
#include <random>
#include <set>

namespace oxdm::store::testing {
namespace {

struct ModelRecord {
    std::int64_t rowid;
    std::string item;
};

// The table as the model sees it: index 0 by key, index 1 by (item, rowid).
class Model {
public:
    using Key = std::pair<std::string, std::int64_t>;
    std::map<Key, ModelRecord> byKey;
    std::set<std::pair<std::string, std::int64_t>> byItem;

    // The key of record `rowid`, or null.
    const Key* KeyOf(std::int64_t rowid) const {
        for (const auto& [key, record] : byKey)
            if (record.rowid == rowid) return &key;
        return nullptr;
    }
    // The rowid found by a seek, 0 for none.
    std::int64_t Expect(short index, SeekKind kind, const Key& key, const std::string& item, std::int64_t rowid) const {
        constexpr std::int64_t lo = std::numeric_limits<std::int64_t>::min(), hi = std::numeric_limits<std::int64_t>::max();
        if (index == 0) {
            auto rid = [&](auto it) { return it == byKey.end() ? 0 : it->second.rowid; };
            switch (kind) {
                case SeekKind::First: return rid(byKey.begin());
                case SeekKind::Last: return byKey.empty() ? 0 : byKey.rbegin()->second.rowid;
                case SeekKind::Next:
                case SeekKind::GT: return rid(byKey.upper_bound(key));
                case SeekKind::Prev: {
                    auto it = byKey.lower_bound(key);
                    return it == byKey.begin() ? 0 : std::prev(it)->second.rowid;
                }
                case SeekKind::EQ: return rid(byKey.find(key));
                case SeekKind::GE: return rid(byKey.lower_bound(key));
            }
        }
        auto rid = [&](auto it) { return it == byItem.end() ? 0 : it->second; };
        switch (kind) {
            case SeekKind::First: return rid(byItem.begin());
            case SeekKind::Last: return byItem.empty() ? 0 : byItem.rbegin()->second;
            case SeekKind::Next: return rid(byItem.upper_bound({item, rowid}));
            case SeekKind::GT: return rid(byItem.upper_bound({item, hi}));
            case SeekKind::Prev: {
                auto it = byItem.lower_bound({item, rowid});
                return it == byItem.begin() ? 0 : std::prev(it)->second;
            }
            case SeekKind::EQ: {
                auto it = byItem.lower_bound({item, lo});
                return it != byItem.end() && it->first == item ? it->second : 0;
            }
            case SeekKind::GE: return rid(byItem.lower_bound({item, lo}));
        }
        return 0;
    }
};

TEST(SqliteModel, RandomMovesSeeksAndEditsMatchAMapModel) {
    ScratchDir dir;
    auto store = OpenLines(dir.File("model.oxd"));
    Model model;
    std::mt19937 random(20261122);
    auto pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    auto order = [&] { return std::string(1, static_cast<char>('A' + pick(6))); };
    auto item = [&] { return "I" + std::to_string(pick(4)); };

    RowImage current;
    bool onRecord = false;
    short index = 0;
    for (int step = 0; step < 3000; ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        int action = pick(12);
        if (action < 7) {
            // A move or seek on a random index.
            index = static_cast<short>(pick(2));
            static const SeekKind kinds[] = {SeekKind::First, SeekKind::Last, SeekKind::Next, SeekKind::Prev,
                                             SeekKind::EQ,    SeekKind::GE,   SeekKind::GT};
            SeekKind kind = kinds[pick(7)];
            if ((kind == SeekKind::Next || kind == SeekKind::Prev) && !onRecord) kind = SeekKind::First;
            SeekRequest request{1, index, kind};
            Model::Key key;
            std::string seekItem;
            std::int64_t rowid = 0;
            if (kind == SeekKind::Next || kind == SeekKind::Prev) {
                key = {Text(current, 0), Whole(current, 1)};
                seekItem = Text(current, 2);
                rowid = current.rowid;
            } else {
                key = {order(), pick(8)};
                seekItem = item();
            }
            bool partial = kind == SeekKind::GE && index == 0 && pick(2) == 0;
            if (index == 0) {
                request.key.clear();
                request.key.emplace_back(key.first);
                if (!partial) request.key.emplace_back(std::in_place_type<std::int64_t>, key.second);
            } else {
                request.key.clear();
                request.key.emplace_back(seekItem);
            }
            request.rowid = rowid;
            if (partial) key.second = std::numeric_limits<std::int64_t>::min();
            std::int64_t expected = model.Expect(index, kind, key, seekItem, rowid);
            RowImage found;
            short rc = store->Seek(request, found);
            if (expected == 0) {
                EXPECT_NE(rc, 0);
            } else {
                ASSERT_EQ(rc, 0);
                EXPECT_EQ(found.rowid, expected);
                current = found;
                onRecord = true;
            }
        } else if (action < 9) {
            RowImage row = Line(order(), pick(8), item(), pick(100));
            Model::Key key{Text(row, 0), Whole(row, 1)};
            short rc = store->Insert(1, row);
            if (model.byKey.count(key)) {
                EXPECT_EQ(rc, oxioStatus::INVALID_KEY);
            } else {
                ASSERT_EQ(rc, 0);
                model.byKey[key] = {row.rowid, Text(row, 2)};
                model.byItem.insert({Text(row, 2), row.rowid});
            }
        } else if (action < 11 && onRecord) {
            // Rewrite the current record with a new item and perhaps a new key.
            const Model::Key* old = model.KeyOf(current.rowid);
            ASSERT_NE(old, nullptr);
            Model::Key oldKey = *old;
            RowImage row = current;
            row.fields[2] = item();
            if (pick(3) == 0) row.fields[1] = std::int64_t{pick(8)};
            Model::Key newKey{Text(row, 0), Whole(row, 1)};
            short rc = store->Update(1, row, true);
            if (newKey != oldKey && model.byKey.count(newKey)) {
                EXPECT_EQ(rc, oxioStatus::INVALID_KEY);
            } else {
                ASSERT_EQ(rc, 0);
                model.byItem.erase({model.byKey[oldKey].item, current.rowid});
                model.byKey.erase(oldKey);
                model.byKey[newKey] = {current.rowid, Text(row, 2)};
                model.byItem.insert({Text(row, 2), current.rowid});
                current = row;
            }
        } else if (onRecord) {
            const Model::Key* old = model.KeyOf(current.rowid);
            ASSERT_NE(old, nullptr);
            ASSERT_EQ(store->Delete(1, current.rowid), 0);
            model.byItem.erase({model.byKey[*old].item, current.rowid});
            model.byKey.erase(*old);
            onRecord = false;
        }
        if (onRecord) {
            // The record under the cursor reads back as the model holds it.
            RowImage read;
            ASSERT_EQ(store->Read(1, current.rowid, read), 0);
            const Model::Key* key = model.KeyOf(current.rowid);
            ASSERT_NE(key, nullptr);
            EXPECT_EQ(Text(read, 0), key->first);
            EXPECT_EQ(Whole(read, 1), key->second);
            EXPECT_EQ(Text(read, 2), model.byKey.at(*key).item);
        }
    }
    EXPECT_GT(model.byKey.size(), 10u);
}

}  // namespace
}  // namespace oxdm::store::testing
