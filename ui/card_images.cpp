#include "ui/card_images.h"

#include "ui/drawing.h"
#include "ui/program.h"
#include "ui/resource.h"
#include "ui/smooth_reduce.h"

namespace {

// All in design pixels.
constexpr int LargePipSize = 25;
constexpr int SmallPipSize = 15;
constexpr int PictureWidth = 25;
constexpr int PictureHeight = 27;
constexpr int GlyphSize = 17;
constexpr int FullFaceHeight = 71;
constexpr POINT LargePipPlace = {12, 44};
constexpr POINT SmallPipPlace = {2, 22};
constexpr POINT PicturePlace = {18, 3};
constexpr POINT GlyphPlace = {1, 3};
constexpr POINT WildDeucePlace = {1, 1};
constexpr int CardBackWidth = 75;
constexpr int CardBackHeight = 105;

constexpr std::int32_t DeuceValue = 2;
constexpr std::int32_t JackValue = 11;

HBITMAP LoadPicture(int id) {
    const int scaled = id + PICTURE_SCALE_STEP * (program.scale - 1);
    return LoadBitmapW(program.instance, MAKEINTRESOURCEW(scaled));
}

// Copies column and row of a picture's grid of cells to a place on the card.
void CopyCell(HDC card, POINT place, int width, int height, HBITMAP picture, int column, int row) {
    const int s = program.scale;
    CopyPicture(card, static_cast<int>(place.x) * s, static_cast<int>(place.y) * s, width * s,
                height * s, picture, column * width * s, row * height * s);
}

void CopyLoadedCell(HDC card, POINT place, int width, int height, int id, int column) {
    const HBITMAP picture = LoadPicture(id);
    CopyCell(card, place, width, height, picture, column, 0);
    DeleteObject(picture);
}

bool IsWildDeuce(const CardRecord& card) {
    return program.table.game.id == DeucesWild && card.rankValue == DeuceValue;
}

void DrawFace(HDC dc, const CardRecord& card) {
    if (card.suit == JokerSuit) {
        CopyLoadedCell(dc, {0, 0}, CardImageWidth, FullFaceHeight, IDB_JOKER, 0);
        return;
    }
    if (IsWildDeuce(card)) {
        CopyCell(dc, WildDeucePlace, CardImageWidth, FullFaceHeight, program.wildDeuce, 0, 0);
    } else {
        CopyCell(dc, LargePipPlace, LargePipSize, LargePipSize, program.largePips, card.suit, 0);
    }
    CopyCell(dc, SmallPipPlace, SmallPipSize, SmallPipSize, program.smallPips, card.suit, 0);
    if (card.rankValue >= JackValue) {
        CopyLoadedCell(dc, PicturePlace, PictureWidth, PictureHeight, IDB_PICTURES,
                       card.rankValue - JackValue);
    }
    const int redRow = card.suit == 1 || card.suit == 2 ? 1 : 0;
    CopyCell(dc, GlyphPlace, GlyphSize, GlyphSize, program.ranks, card.rankValue - DeuceValue,
             redRow);
}

struct BlankCard {
    HDC dc;
    HBITMAP bitmap;
    HGDIOBJ before;
};

BlankCard BeginCard() {
    const HDC screen = GetDC(program.window);
    const int width = CardImageWidth * program.scale;
    const int height = CardImageHeight * program.scale;
    BlankCard card{};
    card.dc = CreateCompatibleDC(screen);
    card.bitmap = CreateCompatibleBitmap(screen, width, height);
    card.before = SelectObject(card.dc, card.bitmap);
    ReleaseDC(program.window, screen);
    const RECT whole = {0, 0, width, height};
    FillRect(card.dc, &whole, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    return card;
}

HBITMAP FinishCard(BlankCard& card) {
    SelectObject(card.dc, card.before);
    DeleteDC(card.dc);
    return card.bitmap;
}

HBITMAP MakeCardBack() {
    const int s = program.scale;
    const HBITMAP drawing = LoadPicture(IDB_CARD_BACK);
    BlankCard card = BeginCard();
    DrawReduced(card.dc, CardImageWidth * s, CardImageHeight * s, drawing, CardBackWidth * s,
                CardBackHeight * s);
    DeleteObject(drawing);
    return FinishCard(card);
}

} // namespace

void LoadPictures() {
    program.largePips = LoadPicture(IDB_LARGE_PIPS);
    program.smallPips = LoadPicture(IDB_SMALL_PIPS);
    program.ranks = LoadPicture(IDB_RANKS);
    program.wildDeuce = LoadPicture(IDB_WILD_DEUCE);
    program.cardBack = MakeCardBack();
}

void DeletePictures() {
    ResetHandImages();
    for (HBITMAP* picture : {&program.largePips, &program.smallPips, &program.ranks,
                             &program.wildDeuce, &program.cardBack}) {
        DeleteObject(*picture);
        *picture = nullptr;
    }
}

HBITMAP BuildCardImage(const CardRecord& card) {
    BlankCard blank = BeginCard();
    DrawFace(blank.dc, card);
    return FinishCard(blank);
}

void ShowFace(std::size_t position) {
    ShowBack(position);
    program.faces[position] = BuildCardImage(program.table.hand.cards[position]);
}

void ShowBack(std::size_t position) {
    if (program.faces[position] != nullptr) {
        DeleteObject(program.faces[position]);
        program.faces[position] = nullptr;
    }
}

void ResetHandImages() {
    for (std::size_t position = 0; position < HandSize; ++position) {
        ShowBack(position);
    }
}
