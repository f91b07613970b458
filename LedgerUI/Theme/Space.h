#pragma once

/// Distances and fixed sizes, in pixels at 96 dpi, on a grid of 4.
namespace Space {

inline constexpr int step1 = 4;
inline constexpr int step2 = 8;
inline constexpr int step3 = 12;
inline constexpr int step4 = 16;
inline constexpr int step6 = 24;
inline constexpr int step8 = 32;

inline constexpr int pageMargin = 16;
inline constexpr int dialogMargin = 20;
inline constexpr int labelToField = 4;
inline constexpr int fieldToField = 14;
inline constexpr int sectionGap = 16;

inline constexpr int sideBar = 200;
inline constexpr int rail = 56;
/// Windows narrower than this fold the side bar, secondary actions and filters.
inline constexpr int foldBelow = 1000;
inline constexpr int pageHeader = 52;
inline constexpr int tabRow = 40;
inline constexpr int filterRow = 45;
inline constexpr int totalsStrip = 34;
inline constexpr int statusBar = 26;
inline constexpr int detailPane = 304;
inline constexpr int detailPaneMinimum = 280;
inline constexpr int detailPaneMaximum = 400;
inline constexpr int dialogFoot = 54;
inline constexpr int dialogMaximumWidth = 860;

inline constexpr int control = 30;
inline constexpr int controlSmall = 26;
inline constexpr int controlLarge = 46;
inline constexpr int icon = 16;
/// The width of an icon that stands before a text: the glyph at its left end and the gap to the text.
inline constexpr int iconBeforeText = 22;
inline constexpr int chevron = 12;
inline constexpr int cellPadding = 10;
inline constexpr int cellPaddingOuter = 16;
inline constexpr int radius = 6;
inline constexpr int radiusSmall = 4;

/// Tables at least this wide show an entry on one line, narrower ones on two.
inline constexpr int oneLineFrom = 760;

}
