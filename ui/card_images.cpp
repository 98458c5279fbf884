#include "ui/card_images.h"

#include "ui/drawing.h"
#include "ui/program.h"
#include "ui/resource.h"
#include "ui/smooth_reduce.h"

namespace {

// All in design pixels.
constexpr int LargePipSize = 25;
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

// Which positions of the hand show a face, also while there is no picture of it.
std::array<bool, HandSize> faceUp{};

// Cards are put together from the pictures of one scale, and reduced as a whole where the table is
// of another.
int ArtScale() {
    return PictureScale(program.layout.scale);
}

HBITMAP LoadPicture(int id) {
    const int scaled = id + PICTURE_SCALE_STEP * (ArtScale() - 1);
    const HBITMAP picture = LoadBitmapW(program.instance, MAKEINTRESOURCEW(scaled));
    if (picture == nullptr) {
        DrawAgainLater();
    }
    return picture;
}

// Copies column and row of a picture's grid of cells to a place on the card.
void CopyCell(HDC card, POINT place, int width, int height, HBITMAP picture, int column, int row) {
    const int s = ArtScale();
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
    CopyCell(dc, GlyphPlace, GlyphSize, GlyphSize, program.ranks, card.rankValue - DeuceValue,
             IsRed(card.suit) ? 1 : 0);
}

struct BlankCard {
    HDC dc;
    HBITMAP bitmap; // null if it could not be made
    HGDIOBJ before;
};

// A white card of so many pixels.
BlankCard BeginCard(int width, int height) {
    const HDC screen = GetDC(program.window);
    BlankCard card{};
    card.dc = CreateCompatibleDC(screen);
    card.bitmap = CreateCompatibleBitmap(screen, width, height);
    ReleaseDC(program.window, screen);
    if (card.dc == nullptr || card.bitmap == nullptr) {
        DrawAgainLater();
        DeleteObject(card.bitmap);
        DeleteDC(card.dc);
        return {};
    }
    card.before = SelectObject(card.dc, card.bitmap);
    const RECT whole = {0, 0, width, height};
    FillRect(card.dc, &whole, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    return card;
}

HBITMAP FinishCard(BlankCard& card) {
    if (card.bitmap != nullptr) {
        SelectObject(card.dc, card.before);
        DeleteDC(card.dc);
    }
    return card.bitmap;
}

// A card image of the table's size from a larger picture of it, which is deleted.
HBITMAP ReducedCard(HBITMAP picture, int width, int height) {
    const Area target = {0, 0, Scaled(CardImageWidth), Scaled(CardImageHeight)};
    BlankCard card = BeginCard(Width(target), Height(target));
    DrawReduced(card.dc, target, picture, {0, 0, width, height});
    DeleteObject(picture);
    return FinishCard(card);
}

void DeleteFace(std::size_t position) {
    if (program.faces[position] != nullptr) {
        DeleteObject(program.faces[position]);
        program.faces[position] = nullptr;
    }
}

HBITMAP MakeCardBack() {
    const int s = ArtScale();
    return ReducedCard(LoadPicture(IDB_CARD_BACK), CardBackWidth * s, CardBackHeight * s);
}

} // namespace

void LoadPictures() {
    program.largePips = LoadPicture(IDB_LARGE_PIPS);
    program.smallPips = LoadPicture(IDB_SMALL_PIPS);
    program.ranks = LoadPicture(IDB_RANKS);
    program.wildDeuce = LoadPicture(IDB_WILD_DEUCE);
    program.cardBack = MakeCardBack();
    for (std::size_t position = 0; position < HandSize; ++position) {
        if (faceUp[position]) {
            ShowFace(position);
        }
    }
}

void DeletePictures() {
    for (std::size_t position = 0; position < HandSize; ++position) {
        DeleteFace(position);
    }
    for (HBITMAP* picture : {&program.largePips, &program.smallPips, &program.ranks,
                             &program.wildDeuce, &program.cardBack}) {
        DeleteObject(*picture);
        *picture = nullptr;
    }
}

HBITMAP BuildCardImage(const CardRecord& card) {
    const int width = CardImageWidth * ArtScale();
    const int height = CardImageHeight * ArtScale();
    BlankCard blank = BeginCard(width, height);
    DrawFace(blank.dc, card);
    const HBITMAP face = FinishCard(blank);
    return width == Scaled(CardImageWidth) ? face : ReducedCard(face, width, height);
}

void DrawSmallPip(HDC dc, int x, int y, int suit) {
    const int size = SmallPipSize * ArtScale();
    const int shown = Scaled(SmallPipSize);
    if (size == shown) {
        CopyPicture(dc, x, y, size, size, program.smallPips, suit * size, 0);
    } else {
        DrawReduced(dc, {x, y, x + shown, y + shown}, program.smallPips,
                    {suit * size, 0, (suit + 1) * size, size});
    }
}

void ShowFace(std::size_t position) {
    DeleteFace(position);
    faceUp[position] = true;
    program.faces[position] = BuildCardImage(program.table.hand.cards[position]);
}

void ShowBack(std::size_t position) {
    DeleteFace(position);
    faceUp[position] = false;
}

void ResetHandImages() {
    for (std::size_t position = 0; position < HandSize; ++position) {
        ShowBack(position);
    }
}
