#pragma once

#include <string>

// Folder listings read once and kept while a long run of the program goes on with no user
// acting: a run that looks up a picture or its item view for every product then asks the
// kernel once per folder instead of once per file. While one is kept the program's own
// writes (TextFileWriter) enter it; Kill, FileCopy, MkDir and the user getting control
// (Runtime::WaitForUser) drop them all. Outside a run nothing is kept.
class KeptListings {
  public:
    KeptListings();
    ~KeptListings();
    KeptListings(const KeptListings&) = delete;
    KeptListings& operator=(const KeptListings&) = delete;

    // Drops every kept listing; the next lookup of the run reads its folder again.
    static void forget();
};

// Whether the path names an existing regular file (a link to one counts): from the kept
// listing of its folder during a run, else one stat.
bool IsRegularFile(const std::string& path);

// The program made or replaced this regular file: a kept listing of its folder learns it.
void NoteWritten(const std::string& path);

// During a run the descriptor of the file last written whole and closed stays open, so
// that writing the same file again (the item view, once a product) rewrites it in place
// rather than opening, emptying and closing it anew. KeepWriter takes the descriptor, or
// returns false outside a run (the caller closes it); TakeKeptWriter gives back the one
// kept for exactly this path (-1 if none) and closes any other. Forgetting or ending the
// run closes it. `size` is the length of the file on disk.
bool KeepWriter(const std::string& path, int fd, long long size);
int TakeKeptWriter(const std::string& path, long long& size, bool rewrite);

// A rewrite during a run that fits in the file's length waits in memory, `contents` taken
// (swapped): the next move rewrites the item view again before anybody looks at it.
// It reaches the disk when the file is read through the program (SettleWrites), opened to
// add to, or no longer kept: another file kept, Kill, FileCopy, MkDir, the run's end or
// the user getting control. False (nothing taken) outside a run or for a longer text.
bool WriteBehind(const std::string& path, int fd, long long size, std::string& contents);

// Puts the waiting rewrite on disk; the program's readers of files call it first.
void SettleWrites();
