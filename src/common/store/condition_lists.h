#pragma once
// The condition lists behind the xc_* handles, and their translation into
// the store's filters.
//
// Invariant: handles_ maps each live handle (1..32767) to its list; next is
// the position that xc_get_condition reads next, at most the list's size.

#include "oxdm/common/store/conditions.h"
#include "record_store.h"

#include <map>
#include <vector>

namespace oxdm::store {

class oxStoreFile;

class ConditionLists {
public:
    struct List {
        xc_init_def init;
        std::vector<xc_cond_def> records;
        size_t next = 0;
    };

    static ConditionLists& Instance();

    short Create(const xc_init_def& init);
    // Null for a handle that is not live.
    List* Find(short handle);
    void Destroy(short handle);

private:
    ConditionLists() = default;
    std::map<short, List> handles_;
    short nextHandle_ = 1;
};

// The filter clause that evaluates list `handle` on `table` of `file`:
// empty for handle 0 or an unknown handle. A condition on a field that the
// table does not have is left out, as is a comparison code that does not
// exist.
Filter CompileConditions(short handle, const oxStoreFile& file, short table);

}  // namespace oxdm::store
