#include "soak_presenter.h"

#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/values/text_values.h"

SoakPresenter::SoakPresenter(const oxioFileSpec& spec, unsigned long long seed) : random_(seed) {
    oxioStatus::Status status = oxioStatus::Success;
    CString error;
    file_ = oxioDataFile::Open(spec, false, status, error);
}

SoakPresenter::~SoakPresenter() = default;

void SoakPresenter::BeginSave(const std::string& custno, const std::string& base) {
    custno_ = custno;
    base_ = base;
    conflicts_.clear();
    otherBoxes_.clear();
}

std::string SoakPresenter::CityOnFile(const std::string& custno) const {
    if (!file_) return "?unreadable";
    oxioCursor cursor(*file_, 1, 0);
    oxAlpha key(CString(custno.c_str())), city;
    cursor.AttachColumn("CUSTNO", key);
    cursor.AttachColumn("CITY", city);
    return cursor.FetchEQ(false) == oxioStatus::Success ? city.Format().str() : "?missing";
}

int SoakPresenter::MessageBox(const CString& text, const CString&, unsigned style, unsigned) {
    const bool question = text.Find("Data Conflict Error") != -1;
    if (question || text.Find("Error. Data Conflict!") != -1) {
        if (custno_.empty()) {
            otherBoxes_.push_back(text.str());
            return oxdmBox::DefaultAnswer(style);
        }
        ConflictSeen seen{custno_, base_, CityOnFile(custno_), ConflictAnswer::Notice};
        int answer = oxdmBox::IdOK;
        if (question) {
            const bool overwrite = std::uniform_int_distribution<int>(0, 1)(random_) == 1;
            seen.answer = overwrite ? ConflictAnswer::Overwrite : ConflictAnswer::Kept;
            answer = overwrite ? oxdmBox::IdNo : oxdmBox::IdYes;
        }
        conflicts_.push_back(seen);
        return answer;
    }
    if (text.Find("Delete this ") == 0) return oxdmBox::IdYes;
    otherBoxes_.push_back(text.str());
    return oxdmBox::DefaultAnswer(style);
}
