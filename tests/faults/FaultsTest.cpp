// Fails calls that may fail in what clients do, once and from then on for good. An operation that meets a
// fault answers as the rules say, and when it is tried again as ever. After a fault that came once a picture
// is drawn in the same context as ever; nothing is left when the client has gone. What failures log is in the
// scenarios that are NOT_SWEPT.
//
// One call of each function and operation, or with KIVGLES_FAULTS=all each that is unlike the others.

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <map>
#include <set>

#include <android/log.h>

#include "scenarios/Contracts.h"
#include "support/Process.h"
#include "support/Recorder.h"

namespace kivgles {
namespace {

// What an operation answers when a call of one of these functions fails in it. Others are as ever, and queued
// ones have answered before.
struct Rule {
    std::string operations;
    std::string functions;
    int answer;
    bool isCertain = true;  // or the answer is as ever: it depends on which call it is
};
const Rule RULES[] = {
    {" create ", " pthread_create ", 100},
    {" create ", " eglGetDisplay ", 1},
    {" create ", " eglInitialize ", 2},
    {" create ", " eglChooseConfig ", 3},
    {" create ", " eglCreateContext ", 4},
    {" create ", " eglCreatePbufferSurface ", 5},
    {" connect ", " eglCreateWindowSurface ", 5},
    {" create connect ", " eglMakeCurrent ", 100, false},
    {" init bitmap show font ",
     " glCreateShader glCreateProgram glShaderSource glCompileShader glGetShaderiv glAttachShader "
     "glLinkProgram glGetProgramiv ",
     20},
    {" layer font ", " glGenTextures ", 21},
    {" font ", " FT_Init_FreeType ", 30},
    {" font ", " FT_New_Face ", 31},
    {" font ", " FT_Get_First_Char FT_Get_Next_Char FT_Load_Char FT_Render_Glyph FT_Bitmap_Convert ", 32,
     false},
    // Nobody asks whether these have done it.
    {"",
     " glGetString glCheckFramebufferStatus glFramebufferTexture2D glTexImage2D glGenFramebuffers "
     "glGenBuffers glBufferData glTexSubImage2D glGetIntegerv glGetAttribLocation glGetUniformLocation "
     "glIsShader glIsProgram glGetShaderInfoLog glGetProgramInfoLog FT_Set_Pixel_Sizes FT_Outline_Embolden "
     "FT_Bitmap_Done FT_Done_Face FT_Done_FreeType eglQuerySurface eglSwapBuffers eglDestroySurface "
     "eglDestroyContext eglTerminate eglReleaseThread ",
     0},
};
// What failed once stays so for as long as the context or the window lives.
const std::string LASTING = " eglQuerySurface glGenBuffers glGetAttribLocation glGetUniformLocation ";

bool IsIn(const std::string& words, const std::string& word) {
    return words.find(" " + word + " ") != std::string::npos;
}
bool MayFail(const std::string& function) {
    return std::any_of(std::begin(RULES), std::end(RULES),
                       [&](const Rule& rule) { return IsIn(rule.functions, function); });
}
bool MayAnswer(int answer, const std::string& operation, const std::string& function, int asEver) {
    for (const Rule& rule : RULES) {
        if (IsIn(rule.operations, operation) && IsIn(rule.functions, function)) {
            return answer == rule.answer || (!rule.isCertain && answer == asEver);
        }
    }
    return answer == asEver;
}

// The nth call of a function in what a client does.
struct Site {
    const SweptScenario* scenario;
    std::string function;
    int nth;
};

// Of each function and what it is like: which of an operation's calls it is, and what that operation is and
// calls.
std::vector<Site> FindSites(bool all) {
    std::vector<Site> sites;
    std::set<std::string> found;
    for (const SweptScenario& play : sweptScenarios) {
        recorder::Reset();
        const std::unique_ptr<Scenario> scenario = play.make();
        std::map<std::string, int> before;
        scenario->judge = [&](const Step& expected) {
            std::map<std::string, int> counts = recorder::Counts();
            std::string calls = expected.answer;
            for (const auto& [function, count] : counts) {
                calls += count > before[function] ? " " + function : "";
            }
            for (const auto& [function, count] : counts) {
                for (int nth = before[function] + 1; nth <= count; ++nth) {
                    const int which = std::min(nth - before[function], 3);
                    const std::string kind =
                        all ? Line("{} {} {} {}", function, which, scenario->operation, calls) : function;
                    if (MayFail(function) && scenario->failing.count(function) == 0 &&
                        found.insert(kind).second) {
                        sites.push_back({&play, function, nth});
                    }
                }
            }
            before = counts;
        };
        scenario->Play();
    }
    return sites;
}

class Trial {
 public:
    Trial(const Site& tried, bool isForGood)
        : site(tried), forGood(isForGood), scenario(tried.scenario->make()) {
        scenario->judge = [this](const Step& expected) { Judge(expected); };
    }
    void Run() {
        recorder::Reset();
        recorder::Fail(site.function, site.nth, forGood);
        scenario->Play();
        EXPECT_TRUE(hasCome) << "the fault does not come";
        scenario->End();
    }

 private:
    void Judge(const Step& expected) {
        const int calls = isDrawing ? 0 : recorder::Counts()[site.function];
        const bool fails = calls >= std::max(site.nth, made + 1) && (forGood || made < site.nth);
        made = calls;
        if (!fails) {
            ExpectAsEver(expected);
            return;
        }
        hasCome = true;
        const int answer = std::stoi(scenario->came.answer);
        const int asEver = std::stoi(expected.answer);
        EXPECT_TRUE(MayAnswer(answer, scenario->operation, site.function, asEver))
            << scenario->operation << " answers " << answer;
        EXPECT_TRUE(answer == asEver || !scenario->came.calls.Beginning("E ").lines.empty())
            << scenario->operation << " does not say why it answers " << answer;
        if (!forGood && answer != asEver) {
            if (scenario->operation == "create") {
                scenario->End();  // also when there is nothing
            }
            scenario->Perform();
            EXPECT_EQ(scenario->came.answer, expected.answer) << scenario->operation << ", tried again";
        }
        if (!forGood) {
            DrawAsEver();
        }
        scenario->isOver = !forGood || answer != asEver;
    }
    void DrawAsEver() {
        isDrawing = true;
        recorder::Reset();
        if (IsIn(" destroy renew ", scenario->operation) || IsIn(LASTING, site.function)) {
            scenario->End();
            scenario->Create().Makes(CreateContext());
        }
        scenario->Connect(2).Answers("0, 64 x 48", QuerySurface("window surface"));
        scenario->DrawPicture();
    }
    // Whatever failed before: then calls depend on that until all is drawn anew.
    void ExpectAsEver(const Step& expected) const {
        const Step& came = scenario->came;
        if (hasCome && !isDrawing) {
            EXPECT_EQ(std::stoi(came.answer), std::stoi(expected.answer)) << scenario->operation;
        } else {
            EXPECT_EQ(came.answer, expected.answer) << scenario->operation;
            for (const char* kind : {"E ", "y "}) {  // errors, pictures
                EXPECT_EQ(came.calls.Beginning(kind).lines, expected.calls.Beginning(kind).lines)
                    << scenario->operation;
            }
        }
    }

    const Site& site;
    const bool forGood;
    const std::unique_ptr<Scenario> scenario;
    int made = 0;  // calls before the operation at work
    bool hasCome = false;
    bool isDrawing = false;  // a picture in the same context, after the fault
};

TEST(Faults, OfEachFunctionHaveTheirEffectsAndLeaveNothing) {
    setenv("LP_NUM_THREADS", "0", 0);  // of a driver whose threads only get into one another's way here
    __android_log_set_logger([](const __android_log_message*) {});
    std::set<std::string> functions;
    const std::vector<Site> sites = FindSites(std::getenv("KIVGLES_FAULTS") != nullptr);
    const auto held = [] { return std::pair(recorder::Live(), DescriptorNum()); };
    const auto before = held();
    std::size_t threads = ThreadNum();  // of the survey one may still be ending
    for (const Site& site : sites) {
        functions.insert(site.function);
        for (const bool forGood : {false, true}) {
            SCOPED_TRACE(Line("{}: call {} of {}{}", site.scenario->name, site.nth, site.function,
                              forGood ? " and all later ones" : ""));
            Trial(site, forGood).Run();
            AwaitThreadNum(threads);
            threads = ThreadNum();
            ASSERT_EQ(held(), before);
        }
    }
    EXPECT_GT(functions.size(), 40U);
    std::printf("faults: %zu functions, %zu trials\n", functions.size(), 2 * sites.size());
}

}  // namespace
}  // namespace kivgles
