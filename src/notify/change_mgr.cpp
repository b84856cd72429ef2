#include "oxdm/notify/change_mgr.h"

#include <cassert>
#include <cstddef>
#include <cstdint>

#include "oxdm/notify/change.h"
#include "oxdm/notify/operation.h"

mvcChangeMgr* mvcChangeMgr::_Instance = nullptr;

namespace {

// The registry's loops run on a signed 16-bit index that is compared, widened
// with its sign, as an unsigned number against the size read anew each pass.
// Past 32,767 the index turns negative, widens to a huge number and ends the
// loop: records from position 32,768 on are out of reach.
using Index16 = std::int16_t;

bool InReach(Index16 index, std::size_t size) {
    return static_cast<std::size_t>(static_cast<std::ptrdiff_t>(index)) < size;
}

Index16 Next(Index16 index) { return static_cast<Index16>(index + 1); }

// Erases, in place and in order, every record for which matches() holds.
template <class Match>
void EraseMatching(std::vector<mvcObserverHandle>& records, Match matches) {
    for (std::size_t i = 0; i < records.size();) {
        if (matches(*records[i]))
            records.erase(records.begin() + static_cast<std::ptrdiff_t>(i));
        else
            ++i;
    }
}

}  // namespace

mvcChangeMgr* mvcChangeMgr::Instance() {
    if (!_Instance) _Instance = new mvcChangeMgr;
    return _Instance;
}

void mvcChangeMgr::KillInstance() {
    delete _Instance;
    _Instance = nullptr;
}

mvcChangeMgr::mvcChangeMgr() : observers(std::make_unique<std::vector<mvcObserverHandle>>()) {}

mvcChangeMgr::~mvcChangeMgr() = default;

void mvcChangeMgr::Register(mvcSubject* subject, short event, unsigned long& id,
                            const CBFunctor1<mvcChange*>& cb) {
    // A stale id (from a former registry) is replaced rather than trusted.
    if (id == 0 || id >= nextId) id = nextId++;

    std::vector<mvcObserverHandle>& records = *observers;
    for (Index16 i = 0; InReach(i, records.size()); i = Next(i)) {
        mvcObserverRecord& record = *records[static_cast<std::size_t>(i)];
        if (record.subject == subject && record.event == event && record.id == id) {
            record.cb = cb;  // an update keeps the first place in the order
            return;
        }
    }
    // If the vector cannot grow, the fresh handle is dropped with its record
    // and the registry stays as it was.
    mvcObserverHandle handle(new mvcObserverRecord{subject, event, id, cb});
    records.push_back(handle);
}

void mvcChangeMgr::Unregister(mvcSubject* subject, short event, unsigned long id) {
    EraseMatching(*observers, [&](const mvcObserverRecord& r) {
        return r.subject == subject && r.event == event && r.id == id;
    });
}

void mvcChangeMgr::UnregisterAll(unsigned long& id) {
    const unsigned long target = id;
    EraseMatching(*observers, [target](const mvcObserverRecord& r) { return r.id == target; });
    id = 0;
}

void mvcChangeMgr::UnregisterAll(mvcSubject* subject) {
    EraseMatching(*observers, [subject](const mvcObserverRecord& r) { return r.subject == subject; });
}

void mvcChangeMgr::Notify(mvcChange* change, bool deferred) {
    assert(change != nullptr);
    if (deferred) {
        // Posting is not built: the operation and its change stay unowned.
        (new mvcChangeOperation(change))->Post();
        return;
    }
    // The operation deletes the change when it goes, also when an observer
    // throws out of the delivery.
    std::unique_ptr<mvcChangeOperation> operation(new mvcChangeOperation(change));
    operation->Do();
}

void mvcChangeMgr::DoNotify(mvcChange* change) {
    assert(change != nullptr);
    mvcSubject* const subject = change->Subject();
    const short event = change->Event();
    const bool skipInitiator = !change->NotifyInitiator();
    const unsigned long initiator = change->Initiator();

    // Observers may register, unregister and notify from inside the call:
    // the size is read anew on every pass and nothing compensates for a
    // record shifted into the current place by an erase.
    for (Index16 i = 0; InReach(i, observers->size()); i = Next(i)) {
        const mvcObserverHandle& slot = (*observers)[static_cast<std::size_t>(i)];
        if (slot->subject != subject || slot->event != event) continue;
        if (skipInitiator && slot->id == initiator) continue;
        // The extra share keeps the record alive if the call unregisters it;
        // the functor itself is called in place, not copied.
        const mvcObserverHandle keep = slot;
        keep->cb(change);
    }
}
