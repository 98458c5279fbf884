// The contract of the six accessors, held by both stores.
#include "settings/settings.h"

#include <gtest/gtest.h>

#include <atomic>
#include <bit>
#include <cstring>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "tests/settings/store_probe.h"

namespace {

constexpr auto Root = SettingsRoot::CurrentUser;
constexpr const wchar_t* Key = L"TessarCE";
constexpr const wchar_t* SubKey = L"TessarCE\\JACKS OR BETTER\\1";

// Lengths that are neither an integer's nor a double's, and one of a page.
constexpr std::size_t OddLengths[] = {0, 1, 2, 3, 5, 7, 9, 16, 4096};

std::vector<std::uint8_t> BytesOf(std::int32_t value) {
    std::vector<std::uint8_t> bytes(sizeof value);
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}

std::vector<std::uint8_t> BytesOf(double value) {
    std::vector<std::uint8_t> bytes(sizeof value);
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}

// A text buffer between canaries.
struct GuardedText {
    static constexpr wchar_t Canary = 0x5A5A;
    wchar_t before[16];
    SettingText text;
    wchar_t after[16];
    GuardedText() {
        for (wchar_t* at = before; at != after + 16; ++at) {
            *at = Canary;
        }
    }
    bool Alive() const {
        for (std::size_t i = 0; i < 16; ++i) {
            if (before[i] != Canary || after[i] != Canary) {
                return false;
            }
        }
        return true;
    }
};

std::wstring Read(const wchar_t* key, const wchar_t* name) {
    GuardedText guarded;
    EXPECT_EQ(ReadString(Root, key, name, guarded.text), 1);
    EXPECT_TRUE(guarded.Alive());
    const std::wstring_view whole(guarded.text, SettingTextSize);
    const std::size_t end = whole.find(L'\0');
    EXPECT_NE(end, std::wstring_view::npos) << "the text is not terminated";
    return std::wstring(whole.substr(0, end));
}

class Settings : public testing::Test {
  protected:
    void SetUp() override { EmptyStore(); }
    void TearDown() override { EmptyStore(); }
};

} // namespace

TEST_F(Settings, AMissingKeyGivesTheFallback) {
    EXPECT_EQ(ReadInteger(Root, L"No such key", L"Credits", 100), 100);
    EXPECT_EQ(ReadDouble(Root, L"No such key", L"Returns0", 2.5), 2.5);
    EXPECT_EQ(Read(L"No such key", L"Text"), L"");
}

TEST_F(Settings, AMissingValueOfAnExistingKeyGivesTheFallback) {
    WriteInteger(Root, Key, L"Hands", 7, 0);
    EXPECT_EQ(ReadInteger(Root, Key, L"Credits", -3), -3);
    EXPECT_EQ(ReadDouble(Root, Key, L"Returns0", -0.25), -0.25);
    EXPECT_EQ(Read(Key, L"Text"), L"");
}

TEST_F(Settings, IntegersComeBackAtEveryExtreme) {
    for (const std::int32_t value : {0, 1, -1, 100, -100, std::numeric_limits<std::int32_t>::max(),
                                     std::numeric_limits<std::int32_t>::min()}) {
        WriteInteger(Root, Key, L"Credits", value, 0);
        EXPECT_EQ(ReadInteger(Root, Key, L"Credits", 12345), value);
        EXPECT_EQ(FindRaw(Key, L"Credits"), (RawValue{RawType::DoubleWord, BytesOf(value)}));
    }
}

TEST_F(Settings, DoublesComeBackBitForBit) {
    using Limits = std::numeric_limits<double>;
    for (const double value :
         {0.0, -0.0, 0.1, -1e300, Limits::max(), Limits::lowest(), Limits::min(),
          Limits::denorm_min(), Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
        WriteDouble(Root, Key, L"Returns1", value, 0);
        const double read = ReadDouble(Root, Key, L"Returns1", 77.0);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(read), std::bit_cast<std::uint64_t>(value));
        EXPECT_EQ(FindRaw(Key, L"Returns1"), (RawValue{RawType::Binary, BytesOf(value)}));
    }
}

TEST_F(Settings, TextsComeBackAndAreStoredWithTheirZero) {
    for (const std::wstring& text :
         {std::wstring(L""), std::wstring(L"99.5439%"), std::wstring(L"a\\b\tc %s \"quoted\""),
          std::wstring(L"\x00E9\x03A9\x4E2D\xFFFD")}) {
        WriteString(Root, Key, L"Text", text.c_str(), 0);
        EXPECT_EQ(Read(Key, L"Text"), text);
        EXPECT_EQ(FindRaw(Key, L"Text"),
                  (RawValue{RawType::Text, TextBytes(text + std::wstring(1, L'\0'))}));
    }
}

TEST_F(Settings, AnIntegerOfAnotherTypeIsReadFromItsFourBytes) {
    for (const RawType type : {RawType::Binary, RawType::Text, RawType::DoubleWord}) {
        PutRaw(Key, L"Credits", {type, {0x41, 0x00, 0x42, 0x00}});
        EXPECT_EQ(ReadInteger(Root, Key, L"Credits", 5), 0x00420041);
    }
}

TEST_F(Settings, ADoubleOfAnotherTypeIsReadFromItsEightBytes) {
    PutRaw(Key, L"Returns0", {RawType::Text, BytesOf(1.5)});
    EXPECT_EQ(ReadDouble(Root, Key, L"Returns0", 5.0), 1.5);
}

TEST_F(Settings, AnIntegerOfAnotherLengthGivesTheFallback) {
    for (const std::size_t length : OddLengths) {
        PutRaw(Key, L"Credits", {RawType::Binary, std::vector<std::uint8_t>(length, 0x11)});
        EXPECT_EQ(ReadInteger(Root, Key, L"Credits", 100), 100) << length << " bytes";
    }
    WriteDouble(Root, Key, L"Credits", 3.0, 0);
    EXPECT_EQ(ReadInteger(Root, Key, L"Credits", 100), 100);
}

TEST_F(Settings, ADoubleOfAnotherLengthGivesTheFallback) {
    for (const std::size_t length : OddLengths) {
        PutRaw(Key, L"Returns0", {RawType::Binary, std::vector<std::uint8_t>(length, 0x11)});
        EXPECT_EQ(ReadDouble(Root, Key, L"Returns0", 2.5), 2.5) << length << " bytes";
    }
    WriteInteger(Root, Key, L"Returns0", 3, 0);
    EXPECT_EQ(ReadDouble(Root, Key, L"Returns0", 2.5), 2.5);
}

TEST_F(Settings, AValueThatIsNoTextReadsAsTheEmptyText) {
    for (const RawType type : {RawType::Binary, RawType::DoubleWord}) {
        PutRaw(Key, L"Text", {type, {0x41, 0x00, 0x00, 0x00}});
        EXPECT_EQ(Read(Key, L"Text"), L"");
    }
}

TEST_F(Settings, ATextThatJustFillsTheBufferIsReadWhole) {
    const std::wstring text(SettingTextSize - 1, L'x');
    WriteString(Root, Key, L"Text", text.c_str(), 0);
    EXPECT_EQ(Read(Key, L"Text"), text);
}

TEST_F(Settings, ATextLongerThanTheBufferReadsAsTheEmptyText) {
    for (const std::size_t length : {SettingTextSize, SettingTextSize + 1, std::size_t{2000}}) {
        WriteString(Root, Key, L"Text", std::wstring(length, L'x').c_str(), 0);
        EXPECT_EQ(Read(Key, L"Text"), L"") << length << " characters";
        EXPECT_EQ(FindRaw(Key, L"Text")->bytes.size(), 2 * (length + 1));
    }
}

TEST_F(Settings, ATextStoredWithoutItsZeroIsTerminatedWhenRead) {
    for (const std::size_t length : {std::size_t{1}, std::size_t{4}, SettingTextSize - 1}) {
        const std::wstring text(length, L'y');
        PutRaw(Key, L"Text", {RawType::Text, TextBytes(text)});
        EXPECT_EQ(Read(Key, L"Text"), text);
    }
}

TEST_F(Settings, ATextThatFillsTheBufferWithoutItsZeroGivesItsLastCharacterUp) {
    PutRaw(Key, L"Text", {RawType::Text, TextBytes(std::wstring(SettingTextSize, L'z'))});
    EXPECT_EQ(Read(Key, L"Text"), std::wstring(SettingTextSize - 1, L'z'));
}

TEST_F(Settings, HalfACharacterAtTheEndOfATextIsLeftOut) {
    PutRaw(Key, L"Text", {RawType::Text, {0x41, 0x00, 0x42}});
    EXPECT_EQ(Read(Key, L"Text"), L"A");
    std::vector<std::uint8_t> bytes = TextBytes(std::wstring(SettingTextSize - 1, L'z'));
    bytes.push_back(0x7A);
    PutRaw(Key, L"Text", {RawType::Text, bytes});
    EXPECT_EQ(Read(Key, L"Text"), std::wstring(SettingTextSize - 1, L'z'));
    PutRaw(Key, L"Text", {RawType::Text, {0x41}});
    EXPECT_EQ(Read(Key, L"Text"), L"");
}

TEST_F(Settings, ATextOfNoBytesIsEmpty) {
    PutRaw(Key, L"Text", {RawType::Text, {}});
    EXPECT_EQ(Read(Key, L"Text"), L"");
}

TEST_F(Settings, ATextEndsAtItsFirstZero) {
    PutRaw(Key, L"Text", {RawType::Text, TextBytes(std::wstring(L"one\0two\0", 8))});
    EXPECT_EQ(Read(Key, L"Text"), L"one");
}

TEST_F(Settings, OddValueNamesAreNamesLikeOthers) {
    const std::wstring names[] = {L"",
                                  L" ",
                                  L"a name with spaces ",
                                  L"back\\slash",
                                  L"\\",
                                  L"per%cent %s %i",
                                  L"slash/and:colon*?\"<>|",
                                  L"\x00FC\x03A9\x4E2D\x6587",
                                  L"tab\tline\nend",
                                  std::wstring(255, L'n')};
    std::int32_t value = 0;
    for (const std::wstring& name : names) {
        WriteInteger(Root, Key, name.c_str(), ++value, 0);
    }
    value = 0;
    for (const std::wstring& name : names) {
        EXPECT_EQ(ReadInteger(Root, Key, name.c_str(), -1), ++value);
        WriteInteger(Root, Key, name.c_str(), 0, 1);
        EXPECT_EQ(FindRaw(Key, name), std::nullopt);
    }
}

TEST_F(Settings, NamesAreTheSameInCapitalsAndInSmallLetters) {
    WriteInteger(Root, L"TessarCE", L"Credits", 42, 0);
    EXPECT_EQ(ReadInteger(Root, L"TESSARce", L"cREDITS", 0), 42);
    WriteInteger(Root, L"tessarce", L"credits", 43, 0);
    EXPECT_EQ(ReadInteger(Root, L"TessarCE", L"Credits", 0), 43);
    WriteInteger(Root, L"TessarCE", L"CREDITS", 0, 1);
    EXPECT_EQ(ReadInteger(Root, L"TessarCE", L"Credits", 0), 0);
}

TEST_F(Settings, KeysAreToldApart) {
    WriteInteger(Root, Key, L"0", 1, 0);
    WriteInteger(Root, SubKey, L"0", 2, 0);
    WriteInteger(Root, L"TessarCE\\JACKS OR BETTER\\5", L"0", 3, 0);
    EXPECT_EQ(ReadInteger(Root, Key, L"0", 0), 1);
    EXPECT_EQ(ReadInteger(Root, SubKey, L"0", 0), 2);
    EXPECT_EQ(ReadInteger(Root, L"TessarCE\\JACKS OR BETTER\\5", L"0", 0), 3);
    EXPECT_EQ(ReadInteger(Root, L"TessarCE\\JACKS OR BETTER", L"0", 9), 9);
}

TEST_F(Settings, ALaterWriteReplacesValueTypeAndLength) {
    WriteString(Root, Key, L"Value", L"a text", 0);
    WriteDouble(Root, Key, L"Value", 6.5, 0);
    EXPECT_EQ(Read(Key, L"Value"), L"");
    EXPECT_EQ(ReadDouble(Root, Key, L"Value", 0.0), 6.5);
    WriteInteger(Root, Key, L"Value", 8, 0);
    EXPECT_EQ(FindRaw(Key, L"Value"), (RawValue{RawType::DoubleWord, BytesOf(8)}));
}

TEST_F(Settings, EveryAccessorRemovesAValueOfAnyType) {
    WriteString(Root, Key, L"A", L"text", 0);
    WriteInteger(Root, Key, L"A", 5, 1);
    EXPECT_EQ(FindRaw(Key, L"A"), std::nullopt);
    WriteInteger(Root, Key, L"B", 5, 0);
    WriteDouble(Root, Key, L"B", 5.0, -1);
    EXPECT_EQ(FindRaw(Key, L"B"), std::nullopt);
    WriteDouble(Root, Key, L"C", 5.0, 0);
    WriteString(Root, Key, L"C", L"not written", 2);
    EXPECT_EQ(FindRaw(Key, L"C"), std::nullopt);
}

TEST_F(Settings, RemovingWhatIsNotThereIsSilent) {
    WriteInteger(Root, Key, L"Kept", 1, 0);
    WriteInteger(Root, Key, L"Missing", 5, 1);
    WriteDouble(Root, L"No such key", L"Missing", 5.0, 1);
    WriteString(Root, L"No such key", L"Missing", L"", 1);
    EXPECT_EQ(FindRaw(Key, L"Missing"), std::nullopt);
    EXPECT_EQ(FindRaw(L"No such key", L"Missing"), std::nullopt);
    EXPECT_EQ(ReadInteger(Root, Key, L"Kept", 0), 1);
}

TEST_F(Settings, AKeyThatCannotBeOpenedReadsAsFallbacks) {
    const std::wstring key = MakeRefusingKey();
    EXPECT_EQ(ReadInteger(Root, key.c_str(), L"Credits", 100), 100);
    EXPECT_EQ(ReadDouble(Root, key.c_str(), L"Returns0", 0.5), 0.5);
    EXPECT_EQ(Read(key.c_str(), L"Text"), L"");
}

TEST_F(Settings, AWriteToAKeyThatCannotBeOpenedIsSilentAndChangesNothing) {
    WriteInteger(Root, Key, L"Credits", 42, 0);
    const std::wstring key = MakeRefusingKey();
    WriteInteger(Root, key.c_str(), L"Credits", 5, 0);
    WriteInteger(Root, key.c_str(), L"Credits", 5, 1);
    WriteDouble(Root, key.c_str(), L"Returns0", 5.0, 0);
    WriteString(Root, key.c_str(), L"Text", L"text", 0);
    EXPECT_EQ(FindRaw(key, L"Returns0"), std::nullopt);
    EXPECT_EQ(FindRaw(key, L"Text"), std::nullopt);
    EXPECT_EQ(FindRaw(Key, L"Credits"), (RawValue{RawType::DoubleWord, BytesOf(42)}));
}

TEST_F(Settings, ThreadsUseTheStoreSideBySide) {
    std::atomic<int> ready{0};
    const auto useOwnKey = [&](const wchar_t* key) {
        for (++ready; ready < 2;) {
        }
        for (std::int32_t i = 0; i < 2000; ++i) {
            const std::wstring name = std::to_wstring(i % 40);
            WriteString(Root, key, name.c_str(), name.c_str(), 0);
            SettingText text;
            ReadString(Root, key, name.c_str(), text);
            ASSERT_EQ(text, name);
            WriteString(Root, key, name.c_str(), L"", 1);
        }
    };
    std::thread other(useOwnKey, L"TessarCE\\one");
    useOwnKey(L"TessarCE\\two");
    other.join();
    EXPECT_EQ(FindRaw(L"TessarCE\\one", L"39"), std::nullopt);
}
