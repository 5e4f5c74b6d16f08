#include "stock/frm_sales.h"

frmSales::frmSales()
    : RecordForm("frmSales", "Sales",
                 "select [Sales Product ID],Cost,[Date Sold],Expenses,[Number Sold],[Price "
                 "Sold],[Where Sold] from Sales Order by [Sales Product ID]",
                 {{0, "Sales Product ID", "Stock No.:"},
                  {1, "Cost", "Cost:"},
                  {2, "Date Sold", "Date Sold:"},
                  {3, "Expenses", "Expenses:"},
                  {4, "Number Sold", "Number Sold:"},
                  {5, "Price Sold", "Total Price Sold For:"},
                  {6, "Where Sold", "Where Sold:"},
                  {7, nullptr, "Net Profit:"}}) {}
