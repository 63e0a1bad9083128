#pragma once

#define IDD_TestForm 9000
#define IDC_testButton 9001
#define IDC_testFrame 9002
#define IDC_testLabel 9003
#define IDC_testList 9004
#define IDC_testText 9005
#define IDC_testCancel 9006
#define IDC_testProgress 9007
#define IDC_testFolders 9008
