#pragma once

#include <memory>

#include "records/connection.h"
#include "records/data_control.h"
#include "records/recordset.h"
#include "records/row_stream.h"

// The one way the program's logic makes store objects.
std::unique_ptr<Connection> CreateConnection();
std::unique_ptr<Recordset> CreateRecordset();
std::unique_ptr<DataControl> CreateDataControl();
std::unique_ptr<RowStream> CreateRowStream();

// The text that opens every connection of the program.
std::string connectionText(const std::string& databasePath);
