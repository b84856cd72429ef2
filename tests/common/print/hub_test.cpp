// The print hub: confirmation through the presenter, the process and
// terminate callbacks, ending a job by messages, default output names,
// write failures, several jobs at once, and bad hubs.
#include <regex>

#include "oxdm/common/shell/box_styles.h"
#include "print_test_support.h"

namespace {

using printtest::Put;

// What the callbacks saw; the hub hands it back through user_data.
struct Calls {
    int processed = 0;
    int terminated = 0;
    short handle = 0;
    short answer = 0;  // what process answers
    const char* line = "written by the process";
};

short Process(xh_process_def* def) {
    auto* calls = static_cast<Calls*>(def->user_data);
    ++calls->processed;
    calls->handle = def->handle;
    Put(def->handle, 1, 0, calls->line);
    xp_wr_line(def->handle, 1, 0, 0);
    return calls->answer;
}

void Terminate(void* userData) { ++static_cast<Calls*>(userData)->terminated; }

xh_process_def HubDefinition(Calls* calls, const char* output = "") {
    xh_process_def def{};
    def.process_id = xh_process_id();
    std::strcpy(def.name, "Audit Report");
    std::strcpy(def.short_name, "audit report");
    def.process = Process;
    def.terminate = Terminate;
    def.user_data = calls;
    const xp_print_def report = printtest::Definition(87, 60);
    std::memcpy(reinterpret_cast<char*>(&def) + offsetof(xh_process_def, report), &report, sizeof report);
    std::strcpy(def.output, output);
    return def;
}

using HubTest = printtest::PrintTest;

TEST_F(HubTest, ACancelledJobCallsTerminateAndWritesNothing) {
    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdCancel);
    Calls calls;
    xh_process_def def = HubDefinition(&calls);
    EXPECT_EQ(xh_process_hub(&def), 0);
    EXPECT_EQ(calls.terminated, 1);
    EXPECT_EQ(calls.processed, 0);
    const auto& boxes = oxdmDefaultPresenter().Boxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].title, "Audit Report");
    EXPECT_EQ(boxes[0].style & oxdmBox::ButtonMask, oxdmBox::OKCancel);
    EXPECT_EQ(boxes[0].answer, oxdmBox::IdCancel);
    EXPECT_TRUE(Files().empty());
}

TEST_F(HubTest, AConfirmedJobRunsTheProcessAndWritesItsFilesWhenEnded) {
    Calls calls;
    xh_process_def def = HubDefinition(&calls);
    const short hub = xh_process_hub(&def);
    ASSERT_GT(hub, 0);
    EXPECT_EQ(calls.processed, 1);
    EXPECT_EQ(calls.terminated, 0);
    EXPECT_EQ(calls.handle, def.handle);
    EXPECT_EQ(calls.handle, hub);
    // The box names where the report goes.
    ASSERT_EQ(oxdmDefaultPresenter().Boxes().size(), 1u);
    EXPECT_NE(oxdmDefaultPresenter().Boxes()[0].text.Find(dir_.c_str()), -1);

    // The job goes on after the hub answered, hidden or not, until it ends.
    xw_hide_window(hub);
    EXPECT_EQ(Put(hub, 1, 0, "written later"), XP_OK);
    EXPECT_EQ(xp_wr_line(hub, 1, 0, 0), XP_OK);
    EXPECT_TRUE(Files().empty());
    EXPECT_EQ(xw_send_message(hub, XH_MSG_END_REPORT, 0, 0, 0, 0, 0), XP_OK);
    EXPECT_EQ(xw_send_message(hub, XH_MSG_CLOSE, 0, 0, 0, 0, 0), XP_OK);

    const std::vector<std::string> files = Files();
    ASSERT_EQ(files.size(), 2u);
    const std::regex name(R"(audit-report-\d{8}-\d{6}\.(pdf|txt))");
    EXPECT_TRUE(std::regex_match(files[0], name)) << files[0];
    EXPECT_EQ(files[0].substr(0, files[0].size() - 4), files[1].substr(0, files[1].size() - 4));
    const auto pages = printtest::Pages(printtest::ReadFile(dir_ / files[1]));
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_EQ(std::vector<std::string>(pages[0].begin() + 3, pages[0].end()),
              (std::vector<std::string>{" written by the process", " written later"}));
    // The ended job's handle is gone for every call.
    EXPECT_EQ(xp_lines_left(hub), XP_BAD_HANDLE);
    EXPECT_EQ(xw_send_message(hub, XH_MSG_CLOSE, 0, 0, 0, 0, 0), XP_BAD_HANDLE);
}

TEST_F(HubTest, SeveralJobsKeepTheirOwnLinesAndTheirOwnFiles) {
    Calls first;
    Calls second;
    second.line = "second job";
    xh_process_def a = HubDefinition(&first);
    xh_process_def b = HubDefinition(&second);
    const short hubA = xh_process_hub(&a);
    const short hubB = xh_process_hub(&b);
    ASSERT_GT(hubA, 0);
    ASSERT_GT(hubB, 0);
    EXPECT_NE(hubA, hubB);
    // Closing without ending first still writes the report.
    EXPECT_EQ(xw_send_message(hubB, XH_MSG_CLOSE, 0, 0, 0, 0, 0), XP_OK);
    EXPECT_EQ(xw_send_message(hubA, XH_MSG_CLOSE, 0, 0, 0, 0, 0), XP_OK);
    // Both opened in the same second or not, neither overwrote the other.
    std::vector<std::string> texts;
    for (const std::string& file : Files()) {
        if (file.ends_with(".txt")) texts.push_back(printtest::ReadFile(dir_ / file));
    }
    ASSERT_EQ(texts.size(), 2u);
    const int withSecond = std::count_if(texts.begin(), texts.end(),
                                         [](const std::string& t) { return t.find(" second job\n") != std::string::npos; });
    EXPECT_EQ(withSecond, 1);
}

TEST_F(HubTest, AFailedWriteTellsTheOperatorThePathAndTheReason) {
    Calls calls;
    const std::string output = (dir_ / "missing" / "report").string();
    xh_process_def def = HubDefinition(&calls, output.c_str());
    const short hub = xh_process_hub(&def);
    ASSERT_GT(hub, 0);
    EXPECT_EQ(xw_send_message(hub, XH_MSG_END_REPORT, 0, 0, 0, 0, 0), XP_WRITE_FAILED);
    const auto& boxes = oxdmDefaultPresenter().Boxes();
    ASSERT_EQ(boxes.size(), 3u);  // the confirmation, then one per file
    for (const char* extension : {".txt", ".pdf"}) {
        const bool named = std::any_of(boxes.begin() + 1, boxes.end(), [&](const oxdmShownBox& box) {
            return box.text.Find((output + extension).c_str()) != -1 &&
                   box.text.Find("No such file or directory") != -1 && box.title == "Audit Report";
        });
        EXPECT_TRUE(named) << extension;
    }
    EXPECT_EQ(xw_send_message(hub, XH_MSG_CLOSE, 0, 0, 0, 0, 0), XP_OK);
}

TEST_F(HubTest, BadDefinitionsAndHandlesAreRefusedWithoutCallingAnything) {
    Calls calls;
    EXPECT_EQ(xh_process_hub(nullptr), 0);
    xh_process_def def = HubDefinition(&calls);
    def.process_id = 0;
    EXPECT_EQ(xh_process_hub(&def), 0);
    def = HubDefinition(&calls);
    def.process = nullptr;
    EXPECT_EQ(xh_process_hub(&def), 0);
    def = HubDefinition(&calls);
    def.terminate = nullptr;
    EXPECT_EQ(xh_process_hub(&def), 0);
    def = HubDefinition(&calls);
    def.name[0] = '\0';
    EXPECT_EQ(xh_process_hub(&def), 0);
    EXPECT_EQ(calls.processed + calls.terminated, 0);
    EXPECT_TRUE(oxdmDefaultPresenter().Boxes().empty());

    // A process that gives up closes its job: nothing is written.
    calls.answer = 1;
    def = HubDefinition(&calls);
    EXPECT_EQ(xh_process_hub(&def), 0);
    EXPECT_EQ(calls.processed, 1);
    EXPECT_EQ(xp_lines_left(calls.handle), XP_BAD_HANDLE);

    // A job opened without the hub is not a hub; unknown messages are refused.
    const xp_print_def report = printtest::Definition(40, 20);
    const short own = xp_open(&report, (dir_ / "own").c_str());
    EXPECT_EQ(xw_send_message(own, XH_MSG_CLOSE, 0, 0, 0, 0, 0), XP_BAD_HANDLE);
    EXPECT_EQ(xp_close(own), XP_OK);
    calls.answer = 0;
    def = HubDefinition(&calls);
    const short hub = xh_process_hub(&def);
    EXPECT_EQ(xw_send_message(hub, 105, 0, 0, 0, 0, 0), XP_BAD_ARGUMENT);
    for (const short bad : {short{0}, short{-1}, short{32000}}) {
        EXPECT_EQ(xw_send_message(bad, XH_MSG_END_REPORT, 0, 0, 0, 0, 0), XP_BAD_HANDLE);
        xw_hide_window(bad);
    }
    EXPECT_EQ(xw_send_message(hub, XH_MSG_CLOSE, 0, 0, 0, 0, 0), XP_OK);
    // Only the last hub job and the job of its own wrote files.
    const std::vector<std::string> files = Files();
    ASSERT_EQ(files.size(), 4u);
    EXPECT_TRUE(files[0].starts_with("audit-report-"));
    EXPECT_EQ(files[2], "own.pdf");
    EXPECT_EQ(files[3], "own.txt");
}

}  // namespace
