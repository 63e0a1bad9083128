#include "TestFormIds.h"
#include "platform/windows/WindowsMessageBoxes.h"
#include "ui/Controls.h"
#include "ui/MessagePump.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

class TestForm : public ui::Form {
  public:
    TestForm() : ui::Form(IDD_TestForm) {}

    ui::Button testButton{*this, IDC_testButton};
    ui::TextBox testText{*this, IDC_testText};

    int unloads = 0;
    int closings = 0;
    std::function<void()> whileLoading;
    std::function<void()> whenShown;
    std::function<void()> whileUnloading;

  protected:
    void OnLoad() override {
        if (whileLoading) whileLoading();
    }
    void OnActivate() override {
        if (whenShown) whenShown();
    }
    bool OnClosing() override {
        ++closings;
        return true;
    }
    void OnUnload() override {
        ++unloads;
        if (whileUnloading) whileUnloading();
    }
    void OnUnhandledException() noexcept override { ADD_FAILURE(); }
};

/// A form that is shown, and another one to be shown modal over it.
class ModalForm : public testing::Test {
  protected:
    void SetUp() override {
        owner.Create();
        owner.Show();
        owner.testButton.OnClick([this] { ++clicks; });
        SetFocus(owner.testButton.Handle());
        modal.whenShown = [this] { modal.Post([this] { modal.Unload(); }); };
    }

    /// All that a person can do to the owner, by messages that no disabled window stops.
    void UseOwner() {
        HWND button = owner.testButton.Handle();
        PostMessageW(button, BM_CLICK, 0, 0);
        PostMessageW(owner.Handle(), WM_COMMAND, IDCANCEL, 0);
        PostMessageW(owner.Handle(), WM_CLOSE, 0, 0);
        for (const WPARAM key : {VK_ESCAPE, VK_RETURN, VK_SPACE}) {
            PostMessageW(button, WM_KEYDOWN, key, 0);
            PostMessageW(button, WM_KEYUP, key, 0);
        }
        PostMessageW(button, WM_SYSKEYDOWN, VK_F4, 1 << 29);
        ui::RunPendingMessages();
    }
    void ExpectOwnerUntouched() {
        EXPECT_EQ(clicks, 0);
        EXPECT_EQ(owner.closings, 0);
        EXPECT_TRUE(owner.IsLoaded());
    }

    TestForm owner;
    TestForm modal;
    int clicks = 0;
};

TEST_F(ModalForm, TheOwnerCanBeUsedWithoutIt) {
    UseOwner();
    EXPECT_GE(clicks, 1);
    EXPECT_FALSE(owner.IsLoaded());
}

TEST_F(ModalForm, TheOwnerTakesNothingWhileItIsLoaded) {
    bool wasEnabled = true;
    modal.whileLoading = [&] {
        wasEnabled = IsWindowEnabled(owner.Handle()) != FALSE;
        UseOwner();
    };
    modal.ShowModal(&owner);
    EXPECT_FALSE(wasEnabled);
    ExpectOwnerUntouched();
    EXPECT_TRUE(owner.TakesInput());
}

TEST_F(ModalForm, TheOwnerTakesNothingWhileItIsShown) {
    modal.whenShown = [&] {
        UseOwner();
        modal.Post([this] { modal.Unload(); });
    };
    modal.ShowModal(&owner);
    ExpectOwnerUntouched();
    EXPECT_TRUE(owner.TakesInput());
}

TEST_F(ModalForm, ABoxWhileItIsLoadedLeavesTheOwnerDisabled) {
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {
        if (HWND box = FindWindowW(L"#32770", L"While loading")) PostMessageW(box, WM_COMMAND, IDOK, 0);
    });
    bool wasEnabled = true;
    modal.whileLoading = [&] {
        WindowsMessageBoxes().Show(L"Text", L"While loading", box::Ok);
        wasEnabled = IsWindowEnabled(owner.Handle()) != FALSE;
        UseOwner();
    };
    modal.ShowModal(&owner);
    KillTimer(nullptr, timer);
    EXPECT_FALSE(wasEnabled);
    ExpectOwnerUntouched();
    EXPECT_TRUE(IsWindowEnabled(owner.Handle()));
}

TEST_F(ModalForm, TheOwnerWaitsForTheLastOfThoseOverIt) {
    TestForm second;
    modal.whenShown = [&] { modal.Post([this] { modal.Unload(); }); };
    second.whileLoading = [&] {
        modal.ShowModal(&owner);
        EXPECT_FALSE(owner.TakesInput());
    };
    second.whenShown = [&] { second.Post([&] { second.Unload(); }); };
    second.ShowModal(&owner);
    EXPECT_TRUE(owner.TakesInput());
}

TEST_F(ModalForm, EndsWhenItsWindowIsDestroyedUnderIt) {
    modal.whenShown = [&] { modal.Post([this] { DestroyWindow(modal.Handle()); }); };
    modal.ShowModal(&owner);
    EXPECT_FALSE(modal.IsLoaded());
    EXPECT_EQ(modal.unloads, 1);
    EXPECT_TRUE(owner.TakesInput());
}

TEST_F(ModalForm, EndsWhenItsWindowIsDestroyedWhileItIsLoaded) {
    modal.whileLoading = [this] { DestroyWindow(modal.Handle()); };
    modal.ShowModal(&owner);
    EXPECT_FALSE(modal.IsLoaded());
    EXPECT_TRUE(owner.TakesInput());
}

TEST_F(ModalForm, EndsWithTheWindowOfItsOwner) {
    modal.whenShown = [&] { modal.Post([this] { DestroyWindow(owner.Handle()); }); };
    modal.ShowModal(&owner);
    EXPECT_FALSE(modal.IsLoaded());
    EXPECT_FALSE(owner.IsLoaded());
    EXPECT_EQ(modal.unloads, 1);
    EXPECT_EQ(owner.unloads, 1);
}

TEST_F(ModalForm, IsUnloadedOnceThoughMessagesRunMeanwhile) {
    owner.whileUnloading = [this] {
        owner.Unload();
        PostMessageW(owner.Handle(), WM_CLOSE, 0, 0);
        ui::RunPendingMessages();
        EXPECT_TRUE(owner.IsLoaded());
    };
    owner.Unload();
    EXPECT_EQ(owner.unloads, 1);
    EXPECT_FALSE(owner.IsLoaded());
}

TEST_F(ModalForm, IsUnloadedOnceThoughItsWindowIsDestroyedMeanwhile) {
    owner.whileUnloading = [this] { DestroyWindow(owner.Handle()); };
    owner.Unload();
    EXPECT_EQ(owner.unloads, 1);
    EXPECT_FALSE(owner.IsLoaded());
}

TEST_F(ModalForm, DoesNotOpenTwice) {
    int loads = 0;
    modal.whileLoading = [&] {
        ++loads;
        modal.ShowModal(&owner);
    };
    modal.ShowModal(&owner);
    EXPECT_EQ(loads, 1);
    EXPECT_TRUE(owner.TakesInput());
}

TEST_F(ModalForm, IsMinimisedWithItsOwnerAndComesBackWithIt) {
    modal.whenShown = [&] {
        SendMessageW(modal.Handle(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
        EXPECT_FALSE(IsIconic(modal.Handle())) << "it would be a stub on the desktop";
        EXPECT_TRUE(IsIconic(owner.Handle()));
        EXPECT_FALSE(IsWindowVisible(modal.Handle()));
        // What the taskbar button sends.
        SendMessageW(owner.Handle(), WM_SYSCOMMAND, SC_RESTORE, 0);
        EXPECT_FALSE(IsIconic(owner.Handle()));
        EXPECT_TRUE(IsWindowVisible(modal.Handle()));
        EXPECT_FALSE(owner.TakesInput());
        modal.Post([this] { modal.Unload(); });
    };
    modal.ShowModal(&owner);
    EXPECT_TRUE(owner.TakesInput());
}

} // namespace
