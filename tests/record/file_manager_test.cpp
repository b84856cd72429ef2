// The open-file pool: sharing a file between tables, never within one table,
// releasing, and the memory of specs that failed to open.

#include "oxdm/base/exception.h"
#include "oxdm/record/dictionary_manager.h"
#include "oxdm/record/file_manager.h"
#include "record_test_support.h"

namespace {

// Counts the opens that reach the store.
class CountingFileManager : public oxdmFileManager {
public:
    using oxdmFileManager::oxdmFileManager;
    int opens = 0;

protected:
    OpenFileStatus AllocateAndOpenFile(const oxioFileSpec& spec, CreateType create, RequiredType required,
                                       oxioFile::OpenMode mode, oxioFile::ShareMode share, short group,
                                       bool exclusive) override {
        ++opens;
        return oxdmFileManager::AllocateAndOpenFile(spec, create, required, mode, share, group, exclusive);
    }
};

class FileManagerTest : public RecordTestBase {
protected:
    void SetUp() override {
        RecordTestBase::SetUp();
        order_ = dicts_.Table("ord", 2);
        line_ = dicts_.Table("ord", 3);
    }
    oxioFileSpec Sales() const { return oxioFileSpec((Scratch() / "sales.ord").string().c_str()); }
    oxioDataFile* Use(const oxdmTableDef* table) { return &files_.FileForTable(Sales(), table, true, 0); }

    oxdmDictionaryManager dicts_;
    const oxdmTableDef* order_ = nullptr;
    const oxdmTableDef* line_ = nullptr;
    CountingFileManager files_{short(3)};
};

TEST_F(FileManagerTest, TablesShareAFileButNoTableUsesOneTwice) {
    oxioDataFile* first = Use(order_);
    oxioDataFile* second = Use(order_);
    EXPECT_NE(first, second);
    EXPECT_EQ(Use(line_), first);
    EXPECT_EQ(Use(line_), second);
    EXPECT_EQ(files_.opens, 2);
    EXPECT_EQ(files_.TransactionGroup(), 3);

    // Once both users are gone the next one takes the first file again.
    files_.ReleaseTable(Sales(), order_);
    files_.ReleaseTable(Sales(), order_);
    EXPECT_EQ(Use(order_), first);
    EXPECT_EQ(files_.opens, 2);
}

TEST_F(FileManagerTest, ReleasingMoreThanRegisteredIsIgnored) {
    oxioDataFile* first = Use(order_);
    Use(order_);
    files_.ReleaseTable(Sales(), order_);
    files_.ReleaseTable(Sales(), order_);
    files_.ReleaseTable(Sales(), order_);
    files_.ReleaseTable(Sales(), line_);
    EXPECT_EQ(Use(order_), first);
    EXPECT_NE(Use(order_), first);  // the second file is free again too
    EXPECT_EQ(files_.opens, 2);
}

TEST_F(FileManagerTest, NullTableAlwaysOpensAFurtherFile) {
    oxioDataFile* first = Use(order_);
    oxioDataFile* other = &files_.FileForTable(Sales(), nullptr, true, 0);
    EXPECT_NE(other, first);
    EXPECT_EQ(files_.opens, 2);
    // It registered nothing: the table's next user may take it.
    EXPECT_EQ(Use(order_), other);
}

TEST_F(FileManagerTest, FailedSpecIsRefusedWithoutTouchingTheDisk) {
    const oxioFileSpec missing((Scratch() / "absent" / "gone.ord").string().c_str());
    auto open = [&] {
        try {
            files_.FileForTable(missing, order_, false, 0);
        } catch (const oxdmException& e) {
            return e.Message();
        }
        return CString("opened");
    };
    EXPECT_FALSE(files_.AlreadyFailed(missing));
    EXPECT_EQ(open(), "Couldn't open file.");
    EXPECT_EQ(files_.opens, 1);
    EXPECT_TRUE(files_.AlreadyFailed(missing));
    EXPECT_EQ(open(), "Couldn't open file.");
    EXPECT_EQ(open(), "Couldn't open file.");
    EXPECT_EQ(files_.opens, 1);
    // Another spec is not affected.
    EXPECT_FALSE(files_.AlreadyFailed(Sales()));
    Use(order_);

    files_.ClearOpenFailures();
    EXPECT_FALSE(files_.AlreadyFailed(missing));
    EXPECT_EQ(open(), "Couldn't open file.");
    EXPECT_EQ(files_.opens, 3);
}

}  // namespace
