// The functions that look at processes and windows, against real ones.
#include "job/JobVariableSystem.h"

#include "JobExpansion.h"

#include <windows.h>

using namespace JobLayer;

namespace {

class TestWindow {
 public:
  TestWindow(const wchar_t* className, const wchar_t* text) : className_(className) {
    WNDCLASSW definition = {};
    definition.lpfnWndProc = DefWindowProcW;
    definition.hInstance = GetModuleHandleW(nullptr);
    definition.lpszClassName = className;
    RegisterClassW(&definition);
    window_ = CreateWindowExW(0, className, text, WS_OVERLAPPED, 0, 0, 50, 50, nullptr, nullptr,
                              definition.hInstance, nullptr);
  }
  ~TestWindow() {
    DestroyWindow(window_);
    UnregisterClassW(className_, GetModuleHandleW(nullptr));
  }
  TestWindow(const TestWindow&) = delete;
  TestWindow& operator=(const TestWindow&) = delete;
  [[nodiscard]] std::string handle() const {
    return std::to_string(reinterpret_cast<uintptr_t>(window_));
  }

 private:
  const wchar_t* className_;
  HWND window_ = nullptr;
};

} // namespace

TEST(JobVariableSystem, TheTestItselfIsAProcess) {
  JobExpansion bed;
  bed.setVariable("Missing", "none");
  EXPECT_EQ(bed("$(IsProcess:JOB_TEST.exe)"), "True");
  EXPECT_EQ(bed("$(Process:job_t*.EXE)"), "job_test.exe");
  EXPECT_EQ(bed("$(IsProcess:job_test)"), "False");
  EXPECT_EQ(bed("$(IsProcess:)"), "False");
  EXPECT_EQ(bed("$(Process:no such process)"), "none");
}

TEST(JobVariableSystem, WindowsAreFoundByTextAndClass) {
  JobExpansion bed;
  bed.setVariable("Missing", "none");
  const TestWindow one(L"TarvellonTestOne", L"A window (for tests)");
  const TestWindow two(L"TarvellonTestTwo", L"Ein Fenster \x3042");
  EXPECT_EQ(bed("$(IsWindow:A window %Ofor tests%C)"), "True");
  EXPECT_EQ(bed("$(Window:A window %Ofor tests%C)"), one.handle());
  EXPECT_EQ(bed("$(Window:a window *)"), "none") << "in exact case";
  EXPECT_EQ(bed("$(Window::TarvellonTestTwo)"), two.handle());
  EXPECT_EQ(bed("$(Window::tarvellontesttwo)"), "none");
  EXPECT_EQ(bed("$(Window:Ein Fenster \xE3\x81\x82)"), two.handle());
  EXPECT_EQ(bed("$(Window:A window*:TarvellonTestTwo)"), "none");
  EXPECT_EQ(bed("$(Window:A window*:TarvellonTest*)"), one.handle());
  EXPECT_EQ(bed("$(IsWindow:)"), "True");
}

TEST(JobVariableSystem, AWindowThatIsGoneIsMissing) {
  JobExpansion bed;
  { const TestWindow window(L"TarvellonTestThree", L"soon gone"); }
  EXPECT_EQ(bed("$(IsWindow::TarvellonTestThree)"), "False");
  EXPECT_EQ(bed("$(IsMissing:$(Window::TarvellonTestThree))"), "True");
}
