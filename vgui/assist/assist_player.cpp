#include "vgui/assist/assist_player.h"

std::unique_ptr<VAssistPlayer> VGCreateAssistPlayer()
{
    return nullptr;
}
