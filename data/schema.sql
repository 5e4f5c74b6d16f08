-- The catalogue database. Declared types name the kind of each column, which the
-- program's store enforces on every write:
--   COUNTER   key the store assigns        LONG      whole number
--   TEXT      text (255)                   DOUBLE    number
--   LONGTEXT  long text                    MONEY     currency, four decimals
--   YESNO     yes/no, True stored as -1    DATETIME  date, days since 1899-12-30
-- Products keeps its stored column order: the bulk tools address columns by position.

CREATE TABLE Products (
    PID INTEGER PRIMARY KEY AUTOINCREMENT,
    Supplier TEXT,
    StockNo TEXT,
    ProdName TEXT,
    ProdDesc TEXT,
    PageNo TEXT,
    Packaging TEXT,
    Cost1 MONEY,
    Cost2 MONEY,
    Cost3 MONEY,
    Cost4 MONEY,
    Cost5 MONEY,
    Retail MONEY,
    Price MONEY,
    Weight TEXT,
    MinOrdW TEXT,
    MinOrdR TEXT,
    Picture TEXT,
    Category TEXT,
    OnSpecial YESNO DEFAULT 0,
    OutStock TEXT,
    Disco YESNO DEFAULT 0,
    Orderable YESNO DEFAULT 0,
    Inventory LONG DEFAULT 0,
    OnOrder LONG DEFAULT 0,
    ReOrder TEXT,
    NoSold LONG DEFAULT 0,
    Ship1 TEXT,
    Ship2 TEXT,
    Notes LONGTEXT,
    Taxable YESNO DEFAULT 0
);

CREATE TABLE Supplier (
    SID INTEGER PRIMARY KEY AUTOINCREMENT,
    Add1 TEXT,
    Add2 TEXT,
    City TEXT,
    Contact TEXT,
    Discounts TEXT,
    Email TEXT,
    Fax TEXT,
    Name TEXT,
    Notes LONGTEXT,
    OtherChgs TEXT,
    Phone1 TEXT,
    Phone2 TEXT,
    Ship1 DOUBLE,
    Ship2 DOUBLE,
    Ship3 DOUBLE,
    Ship4 DOUBLE,
    State TEXT,
    URL TEXT,
    Zip TEXT,
    UserName TEXT,
    PassWord TEXT,
    TaxRate MONEY
);

CREATE TABLE Orders (
    [Order ID] TEXT,
    [Back Ordered] LONG,
    [Cost] MONEY,
    [Date Ordered] DATETIME,
    [Date Received] DATETIME,
    [Description] TEXT,
    [NumberOrdered] LONG,
    [Packing] TEXT,
    [ProductOrderID] TEXT,
    [TotalItems] LONG,
    [WtPrice] MONEY,
    [Discount] MONEY,
    [Shipping] MONEY,
    [Fees] MONEY
);

CREATE TABLE Invoice (
    [Order ID] TEXT,
    [Discount] MONEY,
    [Grand Total] MONEY,
    [Shipping] MONEY,
    [Sub Total] MONEY,
    [Sub Total2] MONEY,
    [Tax] MONEY,
    [Total Order] MONEY
);

CREATE TABLE Inventory (
    [Product Id] TEXT,
    [Cost] MONEY,
    [Date In] DATETIME,
    [Date Sold] DATETIME,
    [Description] TEXT,
    [Number] LONG,
    [Retail] MONEY,
    [Wholesale] MONEY
);

CREATE TABLE Sales (
    [Sales Product ID] TEXT,
    [Cost] MONEY,
    [Date Sold] DATETIME,
    [Expenses] MONEY,
    [Number Sold] LONG,
    [Price Sold] MONEY,
    [Where Sold] TEXT
);

CREATE TABLE Setup (
    [Company Name] TEXT,
    [Company Address] TEXT,
    [Company Address 2] TEXT,
    [Company City] TEXT,
    [Company State] TEXT,
    [Company Zip] TEXT,
    [Owner Name] TEXT,
    [Phone] TEXT,
    [Fax] TEXT,
    [Email] TEXT,
    [Web Page] TEXT
);

CREATE TABLE Category (
    CatID INTEGER PRIMARY KEY AUTOINCREMENT,
    CatName TEXT
);
