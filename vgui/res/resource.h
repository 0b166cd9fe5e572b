// Identifiers of the library's resources. Read by the resource compiler, too.
#pragma once

#define IDI_CHECK_NONE 131 // check boxes of trees
#define IDI_CHECK_ALL 134
#define IDI_CHECK_PART 135
#define IDB_HELP_GLYPH 5016 // picture of the help caption button

#define IDD_ASSIST_SYSTEM 102 // the assist dialog
#define IDI_ASSIST_SYSTEM 128
#define IDD_ASSIST_MSG 5013 // the notice about a missing help topic

#define IDC_ASSIST_PLAYER 1000
#define IDC_ASSIST_VIDEOS 1001
#define IDC_ASSIST_INSTRUCTIONS 1002
#define IDC_ASSIST_UNUSED_FIRST 1004
#define IDC_ASSIST_UNUSED_LAST 1007
#define IDC_ASSIST_FULL_SCREEN 1008
#define IDC_ASSIST_TRACK 1009
#define IDC_ASSIST_GROUP 1010
#define IDC_ASSIST_VIDEOS_LABEL 1011
#define IDC_ASSIST_VIDEOS_LINE 1012
#define IDC_ASSIST_INSTRUCTIONS_LABEL 1013
#define IDC_ASSIST_INSTRUCTIONS_LINE 1014
#define IDC_ASSIST_POSITION 1015
#define IDC_ASSIST_ZOOM_IN 1016
#define IDC_ASSIST_ZOOM_OUT 1017
#define IDC_ASSIST_RESTORE 1018

#define IDC_ASSIST_MSG_HEADLINE 1001
#define IDC_ASSIST_MSG_BODY 1002
