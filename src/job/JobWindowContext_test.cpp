#include "job/JobWindowContext.h"

#include "JobTestBed.h"

using namespace JobLayer;

TEST(JobWindowContext, BeginsWithoutWindowAndMenu) {
  JobWindowContext context;
  EXPECT_EQ(context.dialog, nullptr);
  EXPECT_EQ(context.rectangle, JobRectangle{});
  EXPECT_FALSE(context.menuOpen.isSet());
}

TEST(JobWindowContext, IsOneForTheProcess) {
  EXPECT_EQ(&JobWindowContext::instance(), &JobWindowContext::instance());
}

TEST(JobWindowContext, ShowsThroughWhatIsInstalled) {
  JobTestDialogs dialogs;
  JobWindowContext context;
  JobDialogs& standIn = context.dialogs();
  context.installDialogs(&dialogs);
  context.dialogs().showReport("caption"_text, "text"_text);
  context.dialogs().postToMainDialog(0x1100, 0, 0);
  EXPECT_EQ(dialogs.captions, std::vector<std::string>{"caption"});
  EXPECT_EQ(dialogs.reports, std::vector<std::string>{"text"});
  EXPECT_EQ(dialogs.posted, std::vector<uint32_t>{0x1100});
  context.installDialogs(nullptr);
  EXPECT_EQ(&context.dialogs(), &standIn);
}

TEST(JobWindowContext, AMenuIsOpenForTheLengthOfAScope) {
  JobWindowContext context;
  {
    const RawLayer::RawAutoFlag flag(context.menuOpen);
    EXPECT_TRUE(context.menuOpen.isSet());
  }
  EXPECT_FALSE(context.menuOpen.isSet());
}

TEST(JobWindowContext, ACloseOfARunIsPostedAgainAtItsEndOnce) {
  JobTestDialogs dialogs;
  JobWindowContext context;
  context.installDialogs(&dialogs);
  context.dialog = reinterpret_cast<WinLayer::WinDialog*>(&dialogs);
  context.runEnded();
  EXPECT_TRUE(dialogs.posted.empty());
  context.postToMainDialog(JobDialogs::MessageCommand, 0x11000000, 0);
  context.runEnded();
  EXPECT_EQ(dialogs.posted, std::vector<uint32_t>{0x0111}) << "a restart is not repeated";
  context.postToMainDialog(JobDialogs::MessageClose, 0, 0);
  context.runEnded();
  context.runEnded();
  EXPECT_EQ(dialogs.posted, (std::vector<uint32_t>{0x0111, 0x0010, 0x0010}));
}

TEST(JobWindowContext, ACloseIsNotPostedAgainOnceTheMainDialogHasGone) {
  JobTestDialogs dialogs;
  JobWindowContext context;
  context.installDialogs(&dialogs);
  context.dialog = reinterpret_cast<WinLayer::WinDialog*>(&dialogs);
  context.postToMainDialog(JobDialogs::MessageClose, 0, 0);
  context.dialog = nullptr;
  context.runEnded();
  EXPECT_EQ(dialogs.posted, std::vector<uint32_t>{0x0010});
}

#ifndef _WIN32
#include "host/HostSystem.h"

TEST(JobDialogs, WithoutAnInstallationTheSystemsMessageBoxServes) {
  HostSystem::Scope system;
  JobWindowContext context;
  context.dialogs().showReport("caption"_text, "text"_text);
  context.dialogs().postToMainDialog(0x1100, 0,
                                     0); // there is nobody to post to
  const auto messages = system.takeMessages();
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].caption, "caption"_text);
  EXPECT_EQ(messages[0].text, "text"_text);
}
#endif
