#pragma once
// Windows keep their places between runs: at load they move to the saved position of their
// window number, at unload they store it by the rule that keeps them reachable.
#include "core/shared_state.h"

class QWidget;

constexpr int kTwipsPerPixel = 15;

// Move w to (formLeft(n), formTop(n)), given in twips.
void placeAtLoad(QWidget *w, Win n);
// Store w's position into formLeft(n), formTop(n).
void storeAtUnload(const QWidget *w, Win n);
// Sets the accessible description of w and every named child to its objectName.
void nameForAccessibility(QWidget *w);
