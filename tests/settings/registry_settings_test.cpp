// What only the registry has: keys that are there without values.
#include <gtest/gtest.h>
#include <windows.h>

#include "settings/settings.h"
#include "tests/settings/store_probe.h"

namespace {

constexpr auto Root = SettingsRoot::CurrentUser;

bool KeyExists(const wchar_t* path) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, &key) != ERROR_SUCCESS) {
        return false;
    }
    RegCloseKey(key);
    return true;
}

class RegistrySettings : public testing::Test {
  protected:
    void SetUp() override { EmptyStore(); }
    void TearDown() override { EmptyStore(); }
};

} // namespace

TEST_F(RegistrySettings, ReadsNeverCreateAKey) {
    SettingText text;
    ReadInteger(Root, L"TessarCE\\DEUCES WILD\\1", L"0", 1);
    ReadDouble(Root, L"TessarCE\\DEUCES WILD\\1", L"0", 1.0);
    ReadString(Root, L"TessarCE\\DEUCES WILD\\1", L"0", text);
    EXPECT_FALSE(KeyExists(L"TessarCE"));
}

TEST_F(RegistrySettings, WritesCreateEveryMissingKeyOfThePath) {
    WriteInteger(Root, L"TessarCE\\DEUCES WILD\\1", L"0", 1, 0);
    EXPECT_TRUE(KeyExists(L"TessarCE"));
    EXPECT_TRUE(KeyExists(L"TessarCE\\DEUCES WILD"));
    EXPECT_TRUE(KeyExists(L"TessarCE\\DEUCES WILD\\1"));
    EXPECT_FALSE(KeyExists(L"TessarCE\\DEUCES WILD\\5"));
}

TEST_F(RegistrySettings, RemovingAValueCreatesTheMissingKeyToo) {
    WriteString(Root, L"TessarCE\\JOKER WILD\\5", L"0", L"", 1);
    EXPECT_TRUE(KeyExists(L"TessarCE\\JOKER WILD\\5"));
}

TEST_F(RegistrySettings, ADeletedKeyGivesEveryFallback) {
    WriteInteger(Root, L"TessarCE", L"Credits", 42, 0);
    ASSERT_EQ(RegDeleteTreeW(HKEY_CURRENT_USER, L"TessarCE"), ERROR_SUCCESS);
    EXPECT_EQ(ReadInteger(Root, L"TessarCE", L"Credits", 100), 100);
}

TEST_F(RegistrySettings, ATextOfAnotherTextTypeReadsAsTheEmptyText) {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"TessarCE", 0, nullptr, 0, KEY_ALL_ACCESS,
                              nullptr, &key, nullptr),
              ERROR_SUCCESS);
    const wchar_t several[] = L"one\0two\0";
    for (const DWORD type : {REG_EXPAND_SZ, REG_MULTI_SZ, REG_NONE}) {
        RegSetValueExW(key, L"Text", 0, type, reinterpret_cast<const BYTE*>(several),
                       sizeof several);
        SettingText text = L"left from before";
        EXPECT_EQ(ReadString(Root, L"TessarCE", L"Text", text), 1);
        EXPECT_STREQ(text, L"");
    }
    RegCloseKey(key);
}

TEST_F(RegistrySettings, NoHandleIsKeptBetweenCalls) {
    SettingText text;
    const auto useEveryAccessor = [&](const wchar_t* path) {
        WriteInteger(Root, path, L"A", 1, 0);
        WriteDouble(Root, path, L"B", 1.0, 0);
        WriteString(Root, path, L"C", L"c", 0);
        WriteString(Root, path, L"C", L"c", 1);
        ReadInteger(Root, path, L"A", 0);
        ReadDouble(Root, path, L"B", 0.0);
        ReadString(Root, path, L"A", text);
        ReadString(Root, L"No such key", L"A", text);
    };
    useEveryAccessor(L"TessarCE");
    DWORD before = 0;
    DWORD after = 0;
    ASSERT_TRUE(GetProcessHandleCount(GetCurrentProcess(), &before));
    for (int i = 0; i < 100; ++i) {
        useEveryAccessor(L"TessarCE");
    }
    ASSERT_TRUE(GetProcessHandleCount(GetCurrentProcess(), &after));
    EXPECT_EQ(before, after);
}
