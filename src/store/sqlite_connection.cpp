#include "store/sqlite_connection.h"

#include "base/strings.h"
#include "base/vb_error.h"
#include "records/store.h"

std::string connectionText(const std::string& databasePath) {
    return "PROVIDER=Microsoft.Jet.OLEDB.4.0;Data Source=" + databasePath;
}

std::unique_ptr<Connection> CreateConnection() {
    return std::make_unique<SqliteConnection>();
}

void SqliteConnection::Open(const std::string& text, const std::string&, const std::string&) {
    if (file_) throw VbError(vberr::ObjectOpen);
    // "KEY=value;KEY=value": the provider must be the one the catalogue is written for,
    // and the data source is everything behind its "=" up to the next ";".
    std::string provider, source;
    for (std::size_t start = 0; start <= text.size();) {
        std::size_t end = text.find(';', start);
        if (end == std::string::npos) end = text.size();
        std::string part = text.substr(start, end - start);
        std::size_t eq = part.find('=');
        if (eq != std::string::npos) {
            std::string key = UCase(Trim(part.substr(0, eq)));
            std::string value = part.substr(eq + 1);
            if (key == "PROVIDER")
                provider = Trim(value);
            else if (key == "DATA SOURCE")
                source = value;
        }
        start = end + 1;
    }
    if (UCase(provider).rfind("MICROSOFT.JET.OLEDB", 0) != 0)
        throw VbError(vberr::ProviderNotFound);
    file_ = SqliteFile::open(source, SqliteFile::Use::Catalogue);
}

void SqliteConnection::Close() {
    if (!file_) throw VbError(vberr::ObjectClosed);
    file_.reset();
}

std::shared_ptr<SqliteFile> SqliteConnection::file() const {
    if (!file_) throw VbError(vberr::ConnectionClosed);
    return file_;
}
