#pragma once
// The operator of a soak process: answers the library's questions at random
// and notes what it was asked. A data conflict is answered "keep theirs" or
// "overwrite" by a coin; while the question is on screen the record is
// locked by this process, so the token read from the file then is exactly
// the one that an overwrite replaces. "Delete this ...?" is answered yes.
// Every other box is kept for the worker to judge.

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "journal.h"
#include "oxdm/common/shell/presenter.h"
#include "oxdm/common/store/file_spec.h"

class oxioDataFile;

class SoakPresenter : public oxdmPresenter {
public:
    // Reads the file of `spec` on a connection of its own.
    SoakPresenter(const oxioFileSpec& spec, unsigned long long seed);
    ~SoakPresenter() override;
    SoakPresenter(const SoakPresenter&) = delete;
    SoakPresenter& operator=(const SoakPresenter&) = delete;

    int MessageBox(const CString& text, const CString& title, unsigned style, unsigned helpContext) override;
    void DisplayStatus(const CString&, bool) override {}
    void StartWait(const CString&) override {}
    void StopWait() override {}

    // Starts the record of one save of customer `custno` whose token, as the
    // buffer read it, is `base`; forgets what the former save saw. An empty
    // `custno` starts a save of something other than a customer.
    void BeginSave(const std::string& custno, const std::string& base);
    const std::vector<ConflictSeen>& Conflicts() const { return conflicts_; }
    // The boxes of this save that were neither a conflict nor a delete question.
    const std::vector<std::string>& OtherBoxes() const { return otherBoxes_; }

private:
    std::string CityOnFile(const std::string& custno) const;

    // file_: the reading connection, owned, open for the presenter's life.
    // custno_/base_: the save in progress; conflicts_ and otherBoxes_ hold
    // what was shown since BeginSave.
    std::unique_ptr<oxioDataFile> file_;
    std::mt19937_64 random_;
    std::string custno_, base_;
    std::vector<ConflictSeen> conflicts_;
    std::vector<std::string> otherBoxes_;
};
