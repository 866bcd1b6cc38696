#pragma once
#include "facades.h"

#include <memory>

namespace ui {
// Message and input boxes on the screen.
std::shared_ptr<DialogBackend> screenDialogs();
}
