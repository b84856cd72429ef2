// The class face: a cursor with attached values over a record file made
// from a dictionary, its moves, seeks, writes, stamps and bookmarks.

#include "face_fixture.h"
#include "oxdm/common/store/attachments.h"
#include "oxdm/common/store/bookmark.h"
#include "oxdm/common/values/date_value.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/common/values/time_value.h"

namespace oxdm::store::testing {
namespace {

// A cursor on table 1 with every field it needs attached.
struct LineCursor {
    explicit LineCursor(const oxioDataFile& file, short index = 0) : cursor(file, 1, index) {
        EXPECT_TRUE(cursor.AttachColumn("ORDNO", ordno));
        EXPECT_TRUE(cursor.AttachColumn("lineno", lineno));  // names ignore case
        EXPECT_TRUE(cursor.AttachColumn("ITEM", item));
        EXPECT_TRUE(cursor.AttachColumn("QTY", qty));
        EXPECT_TRUE(cursor.AttachColumn("SHIPPED", shipped));
        EXPECT_TRUE(cursor.AttachColumn("AT", at));
        EXPECT_TRUE(cursor.AttachColumn("RUSH", rush));
        EXPECT_TRUE(cursor.AttachColumn("KIND", kind));
        EXPECT_TRUE(cursor.AttachColumn("OPERID", oper));
        EXPECT_TRUE(cursor.AttachColumn("DSTAMP", dstamp));
        EXPECT_TRUE(cursor.AttachColumn("TSTAMP", tstamp));
    }
    oxioStatus::Status Add(const char* order, int line, const char* what, double quantity) {
        ordno.SetVal(CString(order));
        lineno.SetVal(line);
        item.SetVal(CString(what));
        qty.SetVal(quantity);
        return cursor.Insert(nullptr);
    }
    std::string Key() const { return std::string(ordno.GetVal()) + "/" + std::to_string(static_cast<int>(lineno.GetVal())); }

    oxioCursor cursor;
    oxAlpha ordno, item, oper;
    oxDouble lineno{0, 0}, qty{0, 2};
    oxDate shipped, dstamp;
    oxTime at, tstamp;
    oxBool rush;
    oxChoice kind;
};

TEST_F(LineFileTest, CursorWalksInKeyOrderAndStaysOnTheLastRecordAtTheEnd) {
    LineCursor lines(*file_);
    EXPECT_FALSE(lines.cursor.AttachColumn("NOSUCH", lines.item));
    ASSERT_EQ(lines.Add("B", 2, "NUT", 1), oxioStatus::Success);
    ASSERT_EQ(lines.Add("A", 1, "BOLT", 2), oxioStatus::Success);
    ASSERT_EQ(lines.Add("B", 1, "WASHER", 3), oxioStatus::Success);
    EXPECT_EQ(lines.Add("b", 2, "OTHER", 4), oxioStatus::InvalidKey);  // keys ignore case

    ASSERT_EQ(lines.cursor.FetchFirst(false), oxioStatus::Success);
    std::vector<std::string> keys{lines.Key()};
    while (lines.cursor.FetchNext(false) == oxioStatus::Success) keys.push_back(lines.Key());
    EXPECT_EQ(keys, (std::vector<std::string>{"A/1", "B/1", "B/2"}));
    EXPECT_EQ(lines.cursor.FetchNext(false), oxioStatus::AtEnd);
    EXPECT_EQ(lines.Key(), "B/2");
    EXPECT_EQ(std::string(lines.item.GetVal()), "NUT");
    ASSERT_EQ(lines.cursor.FetchPrev(false), oxioStatus::Success);
    EXPECT_EQ(lines.Key(), "B/1");
    ASSERT_EQ(lines.cursor.FetchLast(false), oxioStatus::Success);
    ASSERT_EQ(lines.cursor.FetchFirst(false), oxioStatus::Success);
    EXPECT_EQ(lines.cursor.FetchPrev(false), oxioStatus::AtStart);
    EXPECT_EQ(lines.Key(), "A/1");

    // Index 1 orders by ITEM: BOLT, NUT, WASHER.
    LineCursor byItem(*file_, 1);
    ASSERT_EQ(byItem.cursor.FetchLast(false), oxioStatus::Success);
    EXPECT_EQ(std::string(byItem.item.GetVal()), "WASHER");
    ASSERT_EQ(byItem.cursor.FetchPrev(false), oxioStatus::Success);
    EXPECT_EQ(std::string(byItem.item.GetVal()), "NUT");
}

TEST_F(LineFileTest, KeySeeksHonourPartialKeys) {
    LineCursor lines(*file_);
    for (const char* order : {"A", "B", "C"})
        for (int line = 1; line <= 3; ++line) ASSERT_EQ(lines.Add(order, line, "X", line), oxioStatus::Success);
    lines.cursor.Clear();
    EXPECT_TRUE(lines.ordno.IsNull());
    lines.ordno.SetVal(CString("B"));
    ASSERT_EQ(lines.cursor.FetchGE(false), oxioStatus::Success);
    EXPECT_EQ(lines.Key(), "B/1");
    lines.lineno.SetVal(2.0);
    ASSERT_EQ(lines.cursor.FetchGT(false), oxioStatus::Success);
    EXPECT_EQ(lines.Key(), "B/3");
    lines.ordno.SetVal(CString("B"));
    lines.lineno.SetVal(9.0);
    EXPECT_EQ(lines.cursor.FetchEQ(false), oxioStatus::InvalidKey);
    lines.lineno.SetVal(2.0);
    ASSERT_EQ(lines.cursor.FetchEQ(false), oxioStatus::Success);
    EXPECT_EQ(lines.Key(), "B/2");
    lines.ordno.SetVal(CString("Z"));
    EXPECT_EQ(lines.cursor.FetchGE(false), oxioStatus::AtEnd);
}

TEST_F(LineFileTest, WritesFillStampsAndCarryEveryFieldType) {
    LineCursor lines(*file_);
    lines.shipped = oxDate(2, 28, 2026);
    lines.at = oxTime(13, 45, 10);
    lines.rush.SetVal(true);
    lines.kind.SetVal(static_cast<unsigned short>(2));
    ASSERT_EQ(lines.Add("A", 1, "BOLT", 12.5), oxioStatus::Success);
    EXPECT_EQ(std::string(lines.oper.GetVal()), "TESTER");
    EXPECT_FALSE(lines.dstamp.IsNull());
    EXPECT_FALSE(lines.tstamp.IsNull());

    LineCursor other(*file_);
    ASSERT_EQ(other.cursor.FetchFirst(false), oxioStatus::Success);
    EXPECT_EQ(other.qty.GetVal(), 12.5);
    EXPECT_TRUE(other.shipped.Eq(oxDate(2, 28, 2026)));
    EXPECT_TRUE(other.at.Eq(oxTime(13, 45, 10)));
    EXPECT_TRUE(other.rush.GetVal());
    EXPECT_EQ(other.kind.GetVal(), 2);
    EXPECT_TRUE(other.dstamp.Eq(lines.dstamp));
    oxDate today;
    today.SetCurrent();
    EXPECT_TRUE(other.dstamp.Eq(today));

    // GetColumnData and SetColumnData reach the buffer by name.
    oxAlpha text;
    EXPECT_TRUE(other.cursor.GetColumnData("ITEM", text));
    EXPECT_EQ(std::string(text.GetVal()), "BOLT");
    EXPECT_FALSE(other.cursor.GetColumnData("NOSUCH", text));
    EXPECT_TRUE(other.cursor.SetColumnData("ITEM", oxAlpha("NUT")));
    other.cursor.Refresh();
    EXPECT_EQ(std::string(other.item.GetVal()), "NUT");
}

TEST_F(LineFileTest, CheckedUpdateConflictsWithAnotherWriterAndOverwriteWins) {
    LineCursor mine(*file_);
    ASSERT_EQ(mine.Add("A", 1, "BOLT", 1), oxioStatus::Success);
    ASSERT_EQ(mine.cursor.FetchFirst(false), oxioStatus::Success);

    // Another open of the same record file changes the record.
    std::unique_ptr<oxioDataFile> second = OpenFile();
    LineCursor theirs(*second);
    ASSERT_EQ(theirs.cursor.FetchFirst(false), oxioStatus::Success);
    theirs.item.SetVal(CString("THEIRS"));
    ASSERT_EQ(theirs.cursor.Update(nullptr, oxioCursor::CheckConflict), oxioStatus::Success);

    mine.item.SetVal(CString("MINE"));
    EXPECT_EQ(mine.cursor.SeekEQ(), oxioStatus::Success);
    EXPECT_EQ(std::string(mine.item.GetVal()), "MINE");  // SeekEQ reads nothing
    EXPECT_EQ(mine.cursor.Update(nullptr, oxioCursor::CheckConflict), oxioStatus::DataConflict);
    EXPECT_EQ(mine.cursor.Update(nullptr, oxioCursor::Overwrite), oxioStatus::Success);
    ASSERT_EQ(theirs.cursor.FetchCurrent(false), oxioStatus::Success);
    EXPECT_EQ(std::string(theirs.item.GetVal()), "MINE");
    // Having written, the next checked write of mine goes through.
    EXPECT_EQ(mine.cursor.Update(nullptr, oxioCursor::CheckConflict), oxioStatus::Success);

    // A record deleted under a cursor: gone for a re-read, a write and a delete.
    ASSERT_EQ(theirs.cursor.Delete(), oxioStatus::Success);
    EXPECT_EQ(mine.cursor.FetchCurrent(false), oxioStatus::InvalidKey);
    EXPECT_EQ(mine.cursor.Update(nullptr, oxioCursor::Overwrite), oxioStatus::InvalidKey);
    EXPECT_EQ(mine.cursor.Delete(), oxioStatus::InvalidKey);
}

TEST_F(LineFileTest, LocksAreHeldPerRecordAndReleasedByUnlock) {
    LineCursor lines(*file_);
    ASSERT_EQ(lines.Add("A", 1, "BOLT", 1), oxioStatus::Success);
    EXPECT_FALSE(lines.cursor.Locked());
    ASSERT_EQ(lines.cursor.Lock(), oxioStatus::Success);
    EXPECT_TRUE(lines.cursor.Locked());
    // This process holds it: its own writes go through.
    EXPECT_EQ(lines.cursor.Update(nullptr, oxioCursor::CheckConflict), oxioStatus::Success);
    EXPECT_EQ(lines.cursor.Unlock(1), oxioStatus::Success);
    EXPECT_FALSE(lines.cursor.Locked());
    ASSERT_EQ(lines.cursor.FetchFirst(true), oxioStatus::Success);
    EXPECT_TRUE(lines.cursor.Locked());
}

TEST_F(LineFileTest, BookmarksReturnToTheirRecordAndCompareInIndexOrder) {
    LineCursor lines(*file_);
    for (int line = 1; line <= 4; ++line) ASSERT_EQ(lines.Add("A", line, "X", line), oxioStatus::Success);
    ASSERT_EQ(lines.cursor.FetchFirst(false), oxioStatus::Success);
    ASSERT_EQ(lines.cursor.FetchNext(false), oxioStatus::Success);
    lines.item.SetVal(CString("EDITED"));
    oxioBookmark second(lines.cursor, true);
    ASSERT_EQ(lines.cursor.FetchNext(false), oxioStatus::Success);
    oxioBookmark third(lines.cursor, false);
    EXPECT_TRUE(second < third);
    EXPECT_FALSE(third < second);
    EXPECT_FALSE(second == third);
    ASSERT_EQ(second.GoTo(), oxioStatus::Success);
    EXPECT_EQ(lines.Key(), "A/2");
    EXPECT_EQ(std::string(lines.item.GetVal()), "X");
    ASSERT_EQ(second.RestoreContents(true), oxioStatus::Success);
    EXPECT_EQ(std::string(lines.item.GetVal()), "EDITED");
    EXPECT_EQ(third.RestoreContents(true), oxioStatus::InvalidKey);
    oxioBookmark again(lines.cursor, false);
    EXPECT_TRUE(again == second);
    // Moving on goes on from the bookmark's record.
    ASSERT_EQ(lines.cursor.FetchNext(false), oxioStatus::Success);
    EXPECT_EQ(lines.Key(), "A/3");
    ASSERT_EQ(lines.cursor.Delete(), oxioStatus::Success);
    EXPECT_EQ(third.GoTo(), oxioStatus::InvalidKey);
}

TEST_F(LineFileTest, AttachmentsFollowTheRecordTheTableStandsOn) {
    LineCursor lines(*file_);
    ASSERT_EQ(lines.Add("A", 1, "X", 1), oxioStatus::Success);
    ASSERT_EQ(lines.Add("A", 2, "Y", 1), oxioStatus::Success);
    EXPECT_FALSE(lines.cursor.AttachmentsExist());
    oxioAttachments docs(lines.cursor);
    docs.Add("drawing.txt", "a picture");
    ASSERT_EQ(docs.Write(), oxioStatus::Success);
    EXPECT_TRUE(lines.cursor.AttachmentsExist());
    ASSERT_EQ(lines.cursor.FetchFirst(false), oxioStatus::Success);
    EXPECT_FALSE(lines.cursor.AttachmentsExist());
    oxioAttachments read(file_->FileNum(), 1);
    ASSERT_EQ(read.Fetch(false), oxioStatus::Success);
    EXPECT_FALSE(read.Find());
    ASSERT_EQ(lines.cursor.FetchNext(false), oxioStatus::Success);
    ASSERT_EQ(read.Fetch(false), oxioStatus::Success);
    ASSERT_TRUE(read.Find());
    EXPECT_EQ(std::string(read.Documents()[0].data), "a picture");
}

TEST_F(LineFileTest, ADamagedOrMissingRecordFileGivesAStatus) {
    file_.reset();
    {
        std::ofstream out(Path(), std::ios::trunc);
        out << std::string(3000, 'g');
    }
    oxioStatus::Status status = oxioStatus::Success;
    CString error;
    EXPECT_EQ(oxioDataFile::Open(oxioFileSpec(Path().c_str()), false, status, error), nullptr);
    EXPECT_EQ(status, oxioStatus::CorruptData);
    EXPECT_NE(std::string(error).find("lines.tsl"), std::string::npos) << error;
    EXPECT_EQ(oxioDataFile::Open(oxioFileSpec(dir_.File("none.tsl").c_str()), false, status, error), nullptr);
    EXPECT_EQ(status, oxioStatus::FileNotFound);
    EXPECT_EQ(oxioDataFile::Open(oxioFileSpec(dir_.File("none.nodict").c_str()), true, status, error), nullptr);
    EXPECT_EQ(status, oxioStatus::FileNotFound);
}

}  // namespace
}  // namespace oxdm::store::testing
