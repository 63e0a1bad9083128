#pragma once

#define IDD_ctlScan 1700

#define IDC_lblScan 1701
#define IDC_pgbScan 1702
