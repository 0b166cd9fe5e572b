// The gallery's own video help.
#pragma once

// Makes what the assist system looks for: the files "product.ini" and "AssistSystem.ini" in the folder "sys"
// beside that of the program, and the registry key with the folder of the videos. For the key the program
// needs an administrator's rights; without it the help says what is missing.
void PrepareHelpSample();
