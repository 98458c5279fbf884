#include "tests/window/soak/ledger.h"

#include <cwchar>

#include "core/wrap.h"
#include "strategy/best_hold.h"
#include "tests/window/forecast.h"
#include "training/play_grading.h"
#include "ui/resource.h"

namespace {

std::string Narrow(const std::wstring& text) {
    std::string narrow;
    for (const wchar_t letter : text) {
        narrow += letter < 0x80 ? static_cast<char>(letter) : '?';
    }
    return narrow;
}

void Fault(Ledger& ledger, const std::string& what) {
    ledger.faults.push_back(what + " (hand " + std::to_string(ledger.hands) + ", deal " +
                            std::to_string(ledger.deals) + (ledger.table.noDraw ? ", drill" : "") +
                            ")");
}

void Add(std::int32_t& sum, std::int32_t coins) {
    sum = WrapAdd(sum, coins);
}

void Take(std::int32_t& sum, std::int32_t coins) {
    sum = WrapSubtract(sum, coins);
}

// Of a game's payouts the ledger's own record counts; loading a game reads whatever the store holds
// by now.
void UsePayouts(Ledger& ledger) {
    const GameDescriptor& game = ledger.table.game;
    const Paytable& payouts = ledger.payouts[static_cast<std::size_t>(game.id)];
    for (std::int32_t row = 0; row < game.rowCount; ++row) {
        game.oneCoin[row] = payouts.oneCoin[static_cast<std::size_t>(row)];
        game.fiveCoins[row] = payouts.fiveCoins[static_cast<std::size_t>(row)];
    }
}

void ReadPayouts(Ledger& ledger) {
    for (std::int32_t id = 0; id < GameCount; ++id) {
        GameDescriptor game{};
        LoadGame(game, id);
        Paytable& payouts = ledger.payouts[static_cast<std::size_t>(id)];
        for (std::int32_t row = 0; row < game.rowCount; ++row) {
            payouts.oneCoin[static_cast<std::size_t>(row)] = game.oneCoin[row];
            payouts.fiveCoins[static_cast<std::size_t>(row)] = game.fiveCoins[row];
        }
    }
}

void TakePayouts(Ledger& ledger, const JournalEntry& entry) {
    const GameDescriptor& game = ledger.table.game;
    Paytable& payouts = ledger.payouts[static_cast<std::size_t>(game.id)];
    const auto row = static_cast<std::size_t>(entry.number);
    payouts.oneCoin[row] = entry.stored[0] ? entry.x : game.defaultOneCoin[row];
    payouts.fiveCoins[row] = entry.stored[1] ? entry.y : game.defaultFiveCoins[row];
    UsePayouts(ledger);
}

bool CoversBet(const Ledger& ledger) {
    return WrapSubtract(ledger.credits, ledger.table.bet) >= 0;
}

// A count-up that still went on has ended by now.
void EndCountUp(Ledger& ledger) {
    ledger.counting = 0;
}

void DealHand(Ledger& ledger) {
    Table& table = ledger.table;
    if (!CoversBet(ledger) && ledger.unsure == 0) {
        Fault(ledger, "dealt without credits");
    }
    ledger.stake = table.noDraw ? 0 : table.bet;
    Take(ledger.credits, ledger.stake);
    Add(ledger.coins.staked, ledger.stake);
    ForetellDeal(table);
    if (table.training == TrainingMode::Autohold) {
        const std::int32_t best = FindBestHold(table.hand.cards.data(), table.game, table.bet);
        SetHolds(table.hand, resultTable[static_cast<std::size_t>(best)].pattern);
    }
    ledger.facesUp = true;
    ++ledger.deals;
}

void AbandonStake(Ledger& ledger) {
    Add(ledger.coins.unplayed, ledger.stake);
    ledger.stake = 0;
}

void FinishDraw(Ledger& ledger, Running& command) {
    Table& table = ledger.table;
    ledger.countCheck = true;
    Add(ledger.stats.hands, 1);
    ++ledger.hands;
    command.stage = Stage::Nothing;
    if (table.noDraw) {
        EndHolding(table);
        AbandonStake(ledger);
        command.mayStop = true;
        if (!CoversBet(ledger)) {
            command.dealTexts.emplace_back(L"Deal");
        }
        return;
    }
    const Settlement hand = ForetellDraw(table, HeldPattern(table.hand));
    Add(ledger.stats.coinsIn, table.bet);
    Add(ledger.coinsIn, table.bet);
    Add(ledger.coins.unstaked, WrapSubtract(table.bet, ledger.stake));
    ledger.stake = 0;
    Add(ledger.stats.coinsOut, hand.payout);
    Add(ledger.coinsOut, hand.payout);
    EndCountUp(ledger);
    if (hand.payout > 0) {
        Add(ledger.credits, hand.payout);
        Add(ledger.coins.paid, hand.payout);
        ledger.counting = hand.payout;
    } else {
        Add(ledger.coins.unpaid, hand.payout);
    }
    command.dealTexts.emplace_back(L"Deal");
}

void CheckHand(Ledger& ledger, Running& command) {
    Table& table = ledger.table;
    const std::int32_t best = FindBestHold(table.hand.cards.data(), table.game, table.bet);
    const PlayGrade grade = GradePlay(resultTable, best, HeldPattern(table.hand));
    if (ledger.countCheck) {
        CountGrade(ledger.stats, grade);
    }
    if (NeedsWarning(table.training, grade)) {
        command.stage = Stage::MustAsk;
    } else {
        FinishDraw(ledger, command);
    }
}

void ChangeGame(Ledger& ledger, std::int32_t id, Running& command) {
    Table& table = ledger.table;
    if (id < 0 || id >= GameCount) {
        return;
    }
    AbandonStake(ledger);
    PickGame(table, id);
    UsePayouts(ledger);
    ledger.facesUp = false;
    command.dealTexts.emplace_back(L"Deal");
    command.statusText = table.game.title;
}

void ResetCreditsNow(Ledger& ledger) {
    ledger.unsure += ledger.counting;
    Add(ledger.coins.reset, WrapSubtract(StartingCredits, ledger.credits));
    ledger.credits = StartingCredits;
    ++ledger.resets;
}

void BeginCommand(Ledger& ledger, Running& command) {
    Table& table = ledger.table;
    switch (command.id) {
    case IDC_DEAL_DRAW:
        if (table.inDraw) {
            CheckHand(ledger, command);
        } else {
            EndCountUp(ledger);
            command.stage = Stage::MayDeal;
        }
        break;
    case IDC_BET_ONE:
        table.bet = table.bet == MaxBet ? 1 : table.bet + 1;
        command.betText = L"Bet " + std::to_wstring(table.bet);
        break;
    case IDM_NO_TRAINING:
    case IDM_WARN:
    case IDM_AUTOHOLD:
        table.training = static_cast<TrainingMode>(command.id - IDM_NO_TRAINING);
        break;
    case IDM_NO_DRAW:
        table.noDraw = !table.noDraw;
        break;
    case IDM_USE_SOUND:
        table.sound = !table.sound;
        break;
    case IDM_SLOW:
        table.dealSpeed = SlowDeal;
        break;
    case IDM_MEDIUM:
        table.dealSpeed = MediumDeal;
        break;
    case IDM_FAST:
        table.dealSpeed = FastDeal;
        break;
    case IDM_RESET_CREDITS:
        ResetCreditsNow(ledger);
        break;
    default:
        if (command.id >= IDM_FIRST_GAME && command.id <= IDM_LAST_GAME) {
            ChangeGame(ledger, command.id - IDM_FIRST_GAME, command);
        }
        break;
    }
}

// Beside a dialog only a running analysis lets play through, and nothing while a question stands.
bool IsLetIn(const JournalEntry& entry) {
    const bool play =
        entry.told != Told::Command || entry.number == IDC_DEAL_DRAW || entry.number == IDC_BET_ONE;
    return !entry.asking && (entry.enabled || (play && entry.analysisRuns));
}

void EnterCommand(Ledger& ledger, const JournalEntry& entry) {
    Running command;
    command.id = entry.number;
    if (IsLetIn(entry)) {
        BeginCommand(ledger, command);
    } else if (command.id == IDC_DEAL_DRAW && !ledger.table.inDraw) {
        command.dealTexts.emplace_back(L"Deal");
    }
    ledger.running.push_back(command);
}

void EnterReturn(Ledger& ledger, const JournalEntry& entry) {
    if (ledger.running.empty() || ledger.running.back().id != entry.number) {
        Fault(ledger, "a command returned that was not running");
        return;
    }
    const Running command = ledger.running.back();
    ledger.running.pop_back();
    if (ledger.gone) {
        return;
    }
    const std::string name = "command " + std::to_string(command.id);
    if (command.stage == Stage::MayDeal) {
        Fault(ledger, name + " neither dealt nor asked for money");
    }
    if (command.stage == Stage::MustAsk) {
        Fault(ledger, name + " did not ask about the hold");
    }
    for (const std::wstring& text : command.dealTexts) {
        if (command.mayStop && ledger.unsure > 0) {
            continue;
        }
        Fault(ledger, name + " did not set the Deal button to " + Narrow(text));
    }
    if (!command.betText.empty() || !command.statusText.empty()) {
        Fault(ledger, name + " did not show its bet or game");
    }
}

// Whether Deal may stand on the button though nothing made it so: a command that was thrown away is
// not in the journal, and a drill may stop.
bool IsBetweenHands(const Ledger& ledger, const Running& command) {
    return command.mayStop ? ledger.unsure > 0
                           : command.id == IDC_DEAL_DRAW && !ledger.table.inDraw;
}

void EnterDealText(Ledger& ledger, const std::wstring& text) {
    if (ledger.running.empty()) {
        Fault(ledger, "the Deal button changed by itself");
        return;
    }
    Running& command = ledger.running.back();
    if (text == L"DRAW" && command.stage == Stage::MayDeal) {
        command.stage = Stage::Nothing;
        DealHand(ledger);
    } else if (!command.dealTexts.empty() && command.dealTexts.front() == text) {
        command.dealTexts.erase(command.dealTexts.begin());
    } else if (!(text == L"Deal" && IsBetweenHands(ledger, command))) {
        Fault(ledger, "the Deal button became " + Narrow(text) + " by command " +
                          std::to_string(command.id));
    }
}

void EnterShownText(Ledger& ledger, std::wstring Running::*awaited, const std::wstring& text) {
    if (ledger.running.empty() || ledger.running.back().*awaited != text) {
        Fault(ledger, "a control became " + Narrow(text));
        return;
    }
    (ledger.running.back().*awaited).clear();
}

void EnterKey(Ledger& ledger, const JournalEntry& entry) {
    const LONG key = entry.number & 0xFF;
    ledger.signs += key == SignKey ? 1 : 0;
    if (IsLetIn(entry) && key >= '1' && key <= '5') {
        ToggleHold(ledger.table, static_cast<std::size_t>(key - '1'));
    }
}

void EnterTap(Ledger& ledger, const JournalEntry& entry) {
    if (!IsLetIn(entry) || Contains(ledger.layout.prompt, entry.x, entry.y)) {
        return;
    }
    for (std::size_t i = 0; i < HandSize; ++i) {
        if (Contains(ledger.layout.cards[i], entry.x, entry.y)) {
            ToggleHold(ledger.table, i);
        }
    }
}

void EnterOpening(Ledger& ledger, DialogKind kind, LONG texts) {
    ledger.dialogs.push_back({kind, 0});
    ledger.texts += texts;
    Stage* stage = ledger.running.empty() ? nullptr : &ledger.running.back().stage;
    if (kind == DialogKind::Question) {
        ++ledger.questions;
        if (stage == nullptr || *stage != Stage::MustAsk) {
            Fault(ledger, "a question about a hold that needs none");
            return;
        }
        *stage = Stage::Asked;
    }
    if (kind == DialogKind::NeedMoney) {
        if (stage == nullptr || *stage != Stage::MayDeal ||
            (CoversBet(ledger) && ledger.unsure == 0)) {
            Fault(ledger, "asked for money with " + std::to_string(ledger.credits) + " credits");
            return;
        }
        *stage = Stage::Buying;
    }
}

// As a field is read as a signed number: blanks, a sign, digits up to the first other character; 0
// if there are none or too many.
std::int32_t NumberIn(const wchar_t* text) {
    while (*text == L' ') {
        ++text;
    }
    const bool negative = *text == L'-';
    text += negative || *text == L'+' ? 1 : 0;
    std::int64_t number = 0;
    for (; *text >= L'0' && *text <= L'9'; ++text) {
        number = 10 * number + (*text - L'0');
        if (number > 0x80000000LL) {
            return 0;
        }
    }
    number = negative ? -number : number;
    return number > 0x7FFFFFFFLL ? 0 : static_cast<std::int32_t>(number);
}

// A dialog that another stands before takes no answer.
void EnterAnswer(Ledger& ledger, const JournalEntry& entry) {
    if (!entry.enabled) {
        return;
    }
    for (OpenDialog& dialog : ledger.dialogs) {
        const bool answers = entry.dialog != DialogKind::Question ||
                             entry.number == IDC_ANSWER_YES || entry.number == IDC_ANSWER_NO;
        if (dialog.kind == entry.dialog && answers) {
            dialog.answer = entry.number;
        }
    }
    if (entry.dialog == DialogKind::NeedMoney && entry.number == IDOK) {
        const std::int32_t amount = NumberIn(entry.text);
        ledger.table.defaultPurchase = amount;
        Add(ledger.credits, amount);
        Add(ledger.coins.bought, amount);
        ++ledger.purchases;
    }
}

Running* CommandAsking(Ledger& ledger) {
    for (Running& command : ledger.running) {
        if (command.stage == Stage::Asked) {
            return &command;
        }
    }
    return nullptr;
}

void EnterClosing(Ledger& ledger, DialogKind kind) {
    LONG answer = 0;
    for (std::size_t i = ledger.dialogs.size(); i-- > 0;) {
        if (ledger.dialogs[i].kind == kind) {
            answer = ledger.dialogs[i].answer;
            ledger.dialogs.erase(ledger.dialogs.begin() + static_cast<std::ptrdiff_t>(i));
            break;
        }
    }
    if (kind == DialogKind::ConfirmReset && answer == IDYES) {
        ledger.stats = {};
    }
    if (kind == DialogKind::Question) {
        Running* command = CommandAsking(ledger);
        if (command != nullptr && answer == IDC_ANSWER_YES) {
            FinishDraw(ledger, *command);
        } else {
            ledger.countCheck = false;
        }
        if (command != nullptr && command->stage == Stage::Asked) {
            command->stage = Stage::Nothing;
        }
    }
}

template <typename Value>
bool ReadStored(const wchar_t* name, Value& value) {
    DWORD size = sizeof value;
    return RegGetValueW(HKEY_CURRENT_USER, L"TessarCE", name, RRF_RT_ANY, nullptr, &value, &size) ==
               ERROR_SUCCESS &&
           size == sizeof value;
}

template <typename Value>
void Compare(Ledger& ledger, const wchar_t* name, Value expected) {
    Value stored{};
    if (!ReadStored(name, stored) || stored != expected) {
        Fault(ledger, "stored " + Narrow(name) + " is " + std::to_string(stored) + ", not " +
                          std::to_string(expected));
    }
}

} // namespace

void OpenLedger(Ledger& ledger, std::uint32_t seed) {
    ForetellStart(ledger.table, seed);
    ReadPayouts(ledger);
    UsePayouts(ledger);
    ledger.stats = LoadSessionStats();
    ledger.credits = ledger.table.credits;
    ledger.startingCredits = ledger.credits;
}

void Enter(Ledger& ledger, const JournalEntry& entry) {
    switch (entry.told) {
    case Told::Command:
        EnterCommand(ledger, entry);
        break;
    case Told::CommandDone:
        EnterReturn(ledger, entry);
        break;
    case Told::Key:
        EnterKey(ledger, entry);
        break;
    case Told::Tap:
        EnterTap(ledger, entry);
        break;
    case Told::MainGone:
        ledger.gone = true;
        break;
    case Told::Resized:
        ledger.layout = ComputeLayout(FitTable(entry.width, entry.height));
        break;
    case Told::DealText:
        EnterDealText(ledger, entry.text);
        break;
    case Told::BetText:
        EnterShownText(ledger, &Running::betText, entry.text);
        break;
    case Told::StatusText:
        EnterShownText(ledger, &Running::statusText, entry.text);
        break;
    case Told::DialogOpened:
        EnterOpening(ledger, entry.dialog, entry.number);
        break;
    case Told::DialogCommand:
        EnterAnswer(ledger, entry);
        break;
    case Told::DialogClosed:
        EnterClosing(ledger, entry.dialog);
        break;
    case Told::Payouts:
        TakePayouts(ledger, entry);
        break;
    case Told::Mark:
        ledger.mark = entry.number;
        break;
    }
}

void SeeCredits(Ledger& ledger, std::int32_t shown) {
    const std::int64_t late = static_cast<std::uint32_t>(WrapSubtract(shown, ledger.credits));
    if (late > ledger.unsure) {
        Fault(ledger, "the credits are " + std::to_string(shown) + ", not " +
                          std::to_string(ledger.credits));
        return;
    }
    Add(ledger.coins.reset, static_cast<std::int32_t>(late));
    ledger.credits = shown;
    ledger.unsure = 0;
}

void SeeStore(Ledger& ledger) {
    std::int32_t credits = 0;
    ReadStored(L"Credits", credits);
    SeeCredits(ledger, credits);
    Compare(ledger, L"CoinsIn", ledger.stats.coinsIn);
    Compare(ledger, L"CoinsOut", ledger.stats.coinsOut);
    Compare(ledger, L"Hands", ledger.stats.hands);
    Compare(ledger, L"Errors0", ledger.stats.minorErrors);
    Compare(ledger, L"Errors1", ledger.stats.moderateErrors);
    Compare(ledger, L"Errors2", ledger.stats.majorErrors);
    Compare(ledger, L"Returns0", ledger.stats.bestReturn);
    Compare(ledger, L"Returns1", ledger.stats.yourReturn);
    const Table& table = ledger.table;
    Compare(ledger, L"NoDraw", std::int32_t{table.noDraw});
    Compare(ledger, L"Speed", std::int32_t{table.dealSpeed});
    Compare(ledger, L"Sound", std::int32_t{table.sound});
    Compare(ledger, L"DefBuy", std::int32_t{table.defaultPurchase});
    Compare(ledger, L"Lastbet", table.bet);
    Compare(ledger, L"Lastgame", static_cast<std::int32_t>(table.game.id));
}

bool Balances(const Ledger& ledger) {
    const Coins& coins = ledger.coins;
    std::int32_t sum = ledger.startingCredits;
    Add(sum, coins.bought);
    Add(sum, coins.reset);
    // Coins in, but what no deal took; and stakes that never became coins in.
    Take(sum, WrapSubtract(ledger.coinsIn, coins.unstaked));
    Take(sum, coins.unplayed);
    Take(sum, ledger.stake);
    // Coins out, but what was never paid.
    Add(sum, WrapSubtract(ledger.coinsOut, coins.unpaid));
    return sum == ledger.credits;
}
