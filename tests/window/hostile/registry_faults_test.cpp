#include <aclapi.h>

#include <cstdio>

#include "strategy/best_hold.h"
#include "tests/window/dialogs/reading.h"
#include "tests/window/hostile/companion.h"
#include "ui/resource.h"

// A registry that cannot be read or written: a value that is not written keeps what it was, one
// that cannot be read has its default, and nothing else comes of it.

namespace {

class RegistryFaults : public WindowTest {};

constexpr wchar_t KeyName[] = L"TessarCE";

OwnValues Defaults() {
    return ValuesOf(Table{}, SessionStats{});
}

void PutOwnValues(const OwnValues& values) {
    for (const auto& [name, value] : values) {
        ASSERT_TRUE(PutValue(L"", name, value));
    }
}

OwnValues SomeValues() {
    Table table;
    table.credits = 4321;
    table.bet = 3;
    table.dealSpeed = FastDeal;
    table.sound = false;
    table.defaultPurchase = 77;
    GameDescriptor game{};
    LoadGame(game, DeucesWild);
    table.game = game;
    return ValuesOf(table, {1000, 900, 210, 3, 2, 1, 1010.25, 999.5});
}

void ExpectStored(const StoredTree& tree, const std::wstring& name, const StoredValue* expected) {
    const StoredValue* stored = FindValue(tree, L"", name);
    ASSERT_EQ(stored != nullptr, expected != nullptr) << Readable(name);
    if (expected != nullptr) {
        EXPECT_EQ(*stored, *expected) << Readable(name) << ": " << Readable(*stored);
    }
}

// Lets everybody read the key and what is below it, and nobody write.
void LetNobodyWrite(bool nobody) {
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, KeyName, 0, READ_CONTROL | WRITE_DAC, &key),
              ERROR_SUCCESS);
    SID_IDENTIFIER_AUTHORITY world = SECURITY_WORLD_SID_AUTHORITY;
    PSID everyone = nullptr;
    AllocateAndInitializeSid(&world, 1, SECURITY_WORLD_RID, 0, 0, 0, 0, 0, 0, 0, &everyone);
    EXPLICIT_ACCESSW access = {};
    access.grfAccessPermissions = nobody ? KEY_READ : KEY_ALL_ACCESS;
    access.grfAccessMode = SET_ACCESS;
    access.grfInheritance = SUB_CONTAINERS_AND_OBJECTS_INHERIT;
    access.Trustee.TrusteeForm = TRUSTEE_IS_SID;
    access.Trustee.ptstrName = static_cast<LPWSTR>(everyone);
    PACL list = nullptr;
    EXPECT_EQ(SetEntriesInAclW(1, &access, nullptr, &list), static_cast<DWORD>(ERROR_SUCCESS));
    SECURITY_DESCRIPTOR security;
    InitializeSecurityDescriptor(&security, SECURITY_DESCRIPTOR_REVISION);
    SetSecurityDescriptorDacl(&security, TRUE, list, FALSE);
    EXPECT_EQ(RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, &security), ERROR_SUCCESS);
    LocalFree(list);
    FreeSid(everyone);
    RegCloseKey(key);
}

bool CanOpen(REGSAM access) {
    HKEY key = nullptr;
    const bool can = RegOpenKeyExW(HKEY_CURRENT_USER, KeyName, 0, access, &key) == ERROR_SUCCESS;
    RegCloseKey(key);
    return can;
}

} // namespace

// The key is opened for both at every access, so its values are not even read.
TEST_F(RegistryFaults, AKeyThatNobodyMayWriteStaysAsItIs) {
    PutOwnValues(SomeValues());
    const StoredTree before = ReadTree();
    LetNobodyWrite(true);
    if (CanOpen(KEY_ALL_ACCESS)) {
        LetNobodyWrite(false);
        GTEST_SKIP() << "this system keeps nobody from writing";
    }
    Faults faults;
    Companion companion;
    StartCompanion(companion, 5);
    DealHand(companion);
    DrawHand(companion, 3);
    CloseProgram(companion.program);
    EXPECT_EQ(ReadTree(), before);
    LetNobodyWrite(false);
    EXPECT_TRUE(CanOpen(KEY_ALL_ACCESS));
}

TEST_F(RegistryFaults, AValueThatIsNotWrittenKeepsWhatItWas) {
    std::mt19937 random(HostileSeed("writes refused"));
    Faults faults;
    const int points = Repetitions("TESSARIN_FAULTS", 2);
    for (int i = 0; i < points && !HasFatalFailure(); ++i) {
        DeleteSettings();
        const bool anyBefore = OneIn(random, 2);
        if (anyBefore) {
            PutOwnValues(SomeValues());
        }
        const StoredTree before = ReadTree();
        Companion companion;
        StartCompanion(companion, random());
        DealHand(companion);
        DrawHand(companion, random() % HoldCount);
        const int first = Between(random, 0, 30);
        const int count = OneIn(random, 3) ? 1000 : Between(random, 1, 6);
        SCOPED_TRACE("point " + std::to_string(i) + ", first " + std::to_string(first) +
                     ", count " + std::to_string(count));
        faults.Plan(WritingCalls, Refuse, first, count);
        CloseProgram(companion.program);
        faults.End();
        const StoredTree after = ReadTree();
        // A write opens its key and, if that succeeds, sets its value.
        int call = 0;
        for (const auto& [name, value] : ValuesOf(companion.table, companion.stats)) {
            const auto fails = [&] {
                const int index = call++;
                return index >= first && index < first + count;
            };
            const bool written = !fails() && !fails();
            ExpectStored(after, name, written ? &value : FindValue(before, L"", name));
        }
    }
    std::printf("%d writes refused\n", points);
}

TEST_F(RegistryFaults, AValueThatIsNotReadHasItsDefault) {
    std::mt19937 random(HostileSeed("reads refused"));
    const OwnValues stored = SomeValues();
    const OwnValues defaults = Defaults();
    Faults faults;
    const int points = Repetitions("TESSARIN_FAULTS", 2);
    for (int i = 0; i < points && !HasFatalFailure(); ++i) {
        PutOwnValues(stored);
        const int first = Between(random, 0, 30);
        const int count = OneIn(random, 3) ? 100000 : Between(random, 1, 6);
        SCOPED_TRACE("point " + std::to_string(i) + ", first " + std::to_string(first) +
                     ", count " + std::to_string(count));
        faults.Plan(ReadingCalls, Refuse, first, count);
        const RunningProgram program = StartFaulty(1);
        faults.End();
        CloseProgram(program);
        const StoredTree after = ReadTree();
        int kept = 0;
        for (std::size_t value = 0; value < stored.size(); ++value) {
            const StoredValue* now = FindValue(after, L"", stored[value].first);
            ASSERT_NE(now, nullptr);
            EXPECT_TRUE(*now == stored[value].second || *now == defaults[value].second)
                << Readable(stored[value].first) << ": " << Readable(*now);
            kept += *now == stored[value].second ? 1 : 0;
        }
        EXPECT_GE(kept, static_cast<int>(stored.size()) - count);
    }
    std::printf("%d reads refused\n", points);
}

TEST_F(RegistryFaults, AnEditedPaytableHoldsThoughItIsNotWritten) {
    Faults faults;
    Companion companion;
    StartCompanion(companion, 1);
    const HWND dialog = OpenDialog(companion.program, IDM_CHANGE_PAYTABLE, L"Change Paytable");
    for (int row = 0; row < companion.table.game.rowCount; ++row) {
        SendMessageW(GetDlgItem(dialog, IDC_FIRST_FIVE_COINS + row), WM_SETTEXT, 0,
                     reinterpret_cast<LPARAM>(std::to_wstring(row + 40).c_str()));
    }
    faults.Plan(WritingCalls, Refuse, 0, 1000);
    LeaveDialog(dialog, IDOK);
    EXPECT_GE(faults.Refused(), companion.table.game.rowCount);
    faults.End();
    EXPECT_FALSE(SettingsExist());
    for (std::int32_t row = 0; row < companion.table.game.rowCount; ++row) {
        companion.table.game.fiveCoins[row] = row + 40;
    }
    for (std::int32_t row = 0; row < companion.table.game.rowCount; ++row) {
        EXPECT_TRUE(ShowsRow(companion.program, companion.table.game, row, 5, false));
    }
    CloseProgram(companion.program);
}
