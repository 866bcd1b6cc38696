#pragma once
// Our own pictures, drawn in code so that nothing needs shipping.
#include <QPixmap>
#include <functional>

namespace images {
QPixmap go();        // a green disc with a forward arrow
QPixmap setup();     // a spanner on a grey disc
QPixmap about();     // an "i" on a blue disc
QPixmap exitDoor();  // a red disc with a cross
QPixmap antenna();   // a mast with radiating waves
QPixmap receiver();  // a front panel with a dial
}
