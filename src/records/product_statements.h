#pragma once

// The product list as the main form opens it: field order A for the record fields
// (`adoPrimaryRS`), field order B for the grid (`adoprimaryrs2`).
inline constexpr const char* StatementA =
    "select PID,Category,Cost1,Cost2,Cost3,Cost4,Cost5,Disco,Inventory,MinOrdR,MinOrdW,NoSold,"
    "Notes,OnOrder,OnSpecial,Orderable,OutStock,Packaging,PageNo,Picture,Price,ProdDesc,"
    "ProdName,ReOrder,Retail,Ship1,Ship2,StockNo,Supplier,Taxable,Weight from Products order by "
    "StockNo";
inline constexpr const char* StatementB =
    "select StockNo,ProdName,Category,Cost1,Retail,Cost2,Cost3,Cost4,Cost5,Disco,Inventory,"
    "MinOrdR,MinOrdW,NoSold,Notes,OnOrder,OnSpecial,Orderable,OutStock,Packaging,PageNo,Picture,"
    "Price,ProdDesc,ReOrder,Ship1,Ship2,Supplier,Taxable,Weight,PID from Products order by StockNo";
