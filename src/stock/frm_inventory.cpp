#include "stock/frm_inventory.h"

frmInventory::frmInventory()
    : RecordForm("frmInventory", "Inventory",
                 "select [Product Id],Cost,[Date In],[Date Sold],Description,Number,Retail,"
                 "Wholesale from Inventory Order by [Product Id]",
                 {{0, "Product Id", "Stock No.:"},
                  {1, "Cost", "Actual Cost Each:"},
                  {2, "Date In", "Date In:"},
                  {3, "Date Sold", "Date Sold:"},
                  {4, "Description", "Description:"},
                  {5, "Number", "On Hand:"},
                  {6, "Retail", "Retail:"},
                  {7, "Wholesale", "Wholesale:"}}) {}
