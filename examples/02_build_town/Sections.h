// The pipes that the town builds with. Metres.
#pragma once

namespace town {

enum class Shape { Pipe, Box, OpenBox, Ditch, Egg };

struct Section {
    const wchar_t* name;
    const wchar_t* key; // the pipe class, by its keyword
    Shape shape;
    double width; // at the bottom
    double topWidth;
    double height;
    double wall;
    double leastSlope; // per mille
    double leastCover;
};

// Each net takes the sections of its row in this order as it collects more water on its way down.
inline constexpr Section kSections[] = {
    {L"VUφ150", L"VU", Shape::Pipe, 0.15, 0.15, 0.15, 0.0055, 10, 0.8},
    {L"VUφ200", L"VU", Shape::Pipe, 0.2, 0.2, 0.2, 0.007, 4, 1.2},
    {L"VUφ250", L"VU", Shape::Pipe, 0.25, 0.25, 0.25, 0.0084, 3, 1.2},
    {L"HPφ300", L"HP", Shape::Pipe, 0.3, 0.3, 0.3, 0.03, 2.6, 1.2},
    {L"HPφ350", L"HP", Shape::Pipe, 0.35, 0.35, 0.35, 0.032, 2.2, 1.2},
    {L"HPφ500", L"HP", Shape::Pipe, 0.5, 0.5, 0.5, 0.042, 2.5, 1.0},
    {L"HPφ600", L"HP", Shape::Pipe, 0.6, 0.6, 0.6, 0.05, 2, 1.0},
    {L"HPφ800", L"HP", Shape::Pipe, 0.8, 0.8, 0.8, 0.066, 1.6, 1.0},
    {L"PEφ75", L"PE", Shape::Pipe, 0.075, 0.075, 0.075, 0.0082, 2, 1.0},
    {L"PEφ100", L"PE", Shape::Pipe, 0.1, 0.1, 0.1, 0.0114, 2, 1.0},
    {L"PEφ150", L"PE", Shape::Pipe, 0.15, 0.15, 0.15, 0.0164, 2, 1.0},
    {L"卵形600×900", L"EGG", Shape::Egg, 0.6, 0.6, 0.9, 0.09, 2, 0.8},
    {L"□1000×1000", L"BOX", Shape::Box, 1.0, 1.0, 1.0, 0.15, 1.2, 0.6},
    {L"□1500×1200", L"BOX", Shape::Box, 1.5, 1.5, 1.2, 0.18, 1.2, 0.6},
    {L"開渠1200/2000×2000", L"OPEN", Shape::OpenBox, 1.2, 2.0, 2.0, 0.15, 1, 0.0},
    {L"U型300×300", L"UDITCH", Shape::Ditch, 0.3, 0.3, 0.3, 0.06, 5, 0.0},
    {L"U型450×450", L"UDITCH", Shape::Ditch, 0.45, 0.5, 0.45, 0.07, 4, 0.0},
};

inline constexpr int kSectionCount = static_cast<int>(sizeof kSections / sizeof kSections[0]);
inline constexpr const Section& kHousePipe = kSections[0];

// How far the invert lies below the ground at the least.
inline double LeastDepth(const Section& section)
{
    const bool isOpen = section.shape == Shape::OpenBox || section.shape == Shape::Ditch;
    return section.height + (isOpen ? 0 : section.leastCover + section.wall);
}

} // namespace town
