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

long Send(short hub, short message) { return xw_send_message(hub, message, 0, 0, 0, 0, 0); }

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

TEST_F(HubTest, ConfirmedJobsRunTheProcessAndWriteTheirOwnFilesWhenEnded) {
    Calls calls;
    xh_process_def def = HubDefinition(&calls);
    const short hub = xh_process_hub(&def);
    ASSERT_GT(hub, 0);
    EXPECT_EQ(calls.processed + 10 * calls.terminated, 1);
    EXPECT_TRUE(calls.handle == hub && def.handle == hub);
    ASSERT_EQ(oxdmDefaultPresenter().Boxes().size(), 1u);
    EXPECT_NE(oxdmDefaultPresenter().Boxes()[0].text.Find(dir_.c_str()), -1);  // where the report goes

    // A second job, opened in the same second, runs beside the first.
    Calls other;
    other.line = "second job";
    xh_process_def second = HubDefinition(&other);
    const short secondHub = xh_process_hub(&second);
    ASSERT_TRUE(secondHub > 0 && secondHub != hub);
    // The job goes on after the hub answered, hidden or not, until it ends.
    xw_hide_window(hub);
    EXPECT_EQ(Put(hub, 1, 0, "written later"), XP_OK);
    EXPECT_EQ(xp_wr_line(hub, 1, 0, 0), XP_OK);
    EXPECT_TRUE(Files().empty());
    EXPECT_EQ(Send(hub, XH_MSG_END_REPORT), XP_OK);
    EXPECT_EQ(Send(hub, XH_MSG_CLOSE), XP_OK);
    EXPECT_EQ(Send(secondHub, XH_MSG_CLOSE), XP_OK);  // closing unended still writes

    const std::vector<std::string> files = Files();
    ASSERT_EQ(files.size(), 4u);
    const std::regex name(R"(audit-report-\d{8}-\d{6}(-2)?\.(pdf|txt))");
    for (const std::string& file : files) EXPECT_TRUE(std::regex_match(file, name)) << file;
    using Lines = std::vector<std::string>;
    std::vector<Lines> bodies;
    for (const std::string& file : {files[1], files[3]}) {
        const auto pages = printtest::Pages(printtest::ReadFile(dir_ / file));
        ASSERT_EQ(pages.size(), 1u);
        bodies.emplace_back(pages[0].begin() + 3, pages[0].end());
    }
    std::sort(bodies.begin(), bodies.end());
    EXPECT_EQ(bodies, (std::vector<Lines>{{" second job"}, {" written by the process", " written later"}}));
    // The ended job's handle is gone for every call.
    EXPECT_EQ(xp_lines_left(hub), XP_BAD_HANDLE);
    EXPECT_EQ(Send(hub, XH_MSG_CLOSE), XP_BAD_HANDLE);
}

TEST_F(HubTest, AFailedWriteTellsTheOperatorThePathAndTheReason) {
    Calls calls;
    const std::string output = (dir_ / "missing" / "report").string();
    xh_process_def def = HubDefinition(&calls, output.c_str());
    const short hub = xh_process_hub(&def);
    ASSERT_GT(hub, 0);
    EXPECT_EQ(Send(hub, XH_MSG_END_REPORT), XP_WRITE_FAILED);
    const auto& boxes = oxdmDefaultPresenter().Boxes();
    ASSERT_EQ(boxes.size(), 3u);  // the confirmation, then one per file
    for (const char* extension : {".txt", ".pdf"}) {
        const bool named = std::any_of(boxes.begin() + 1, boxes.end(), [&](const oxdmShownBox& box) {
            return box.text.Find((output + extension).c_str()) != -1 &&
                   box.text.Find("No such file or directory") != -1 && box.title == "Audit Report";
        });
        EXPECT_TRUE(named) << extension;
    }
    EXPECT_EQ(Send(hub, XH_MSG_CLOSE), XP_OK);
}

TEST_F(HubTest, BadDefinitionsAndHandlesAreRefusedWithoutCallingAnything) {
    Calls calls;
    EXPECT_EQ(xh_process_hub(nullptr), 0);
    using Breaker = void (*)(xh_process_def&);
    for (const Breaker breaker : {Breaker{[](xh_process_def& d) { d.process_id = 0; }},
                                  Breaker{[](xh_process_def& d) { d.process = nullptr; }},
                                  Breaker{[](xh_process_def& d) { d.terminate = nullptr; }},
                                  Breaker{[](xh_process_def& d) { d.name[0] = '\0'; }}}) {
        xh_process_def def = HubDefinition(&calls);
        breaker(def);
        EXPECT_EQ(xh_process_hub(&def), 0);
    }
    EXPECT_EQ(calls.processed + calls.terminated, 0);
    EXPECT_TRUE(oxdmDefaultPresenter().Boxes().empty());

    // A process that gives up closes its job: nothing is written.
    calls.answer = 1;
    xh_process_def def = HubDefinition(&calls);
    EXPECT_EQ(xh_process_hub(&def), 0);
    EXPECT_EQ(calls.processed, 1);
    EXPECT_EQ(xp_lines_left(calls.handle), XP_BAD_HANDLE);
    EXPECT_TRUE(Files().empty());

    // A job opened without the hub is not a hub; unknown messages are refused.
    const xp_print_def report = printtest::Definition(40, 20);
    const short own = xp_open(&report, (dir_ / "own").c_str());
    EXPECT_EQ(Send(own, XH_MSG_CLOSE), XP_BAD_HANDLE);
    EXPECT_EQ(xp_close(own), XP_OK);
    calls.answer = 0;
    def = HubDefinition(&calls);
    const short hub = xh_process_hub(&def);
    EXPECT_EQ(Send(hub, 105), XP_BAD_ARGUMENT);
    for (const short bad : {short{0}, short{-1}, short{32000}}) EXPECT_EQ(Send(bad, XH_MSG_END_REPORT), XP_BAD_HANDLE);
    EXPECT_EQ(Send(hub, XH_MSG_CLOSE), XP_OK);
}

}  // namespace
