// A test-only program that works on a quotes database as the application does, so tests
// can run the store in separate processes: as a second writer, as an unprivileged user,
// or killed in the middle of a save.
//   quotes_store_tool load PATH          load, then report the count
//   quotes_store_tool load-add-save PATH load, add one quote, save
//   quotes_store_tool save-loop PATH N   load, then save N generated quotes forever,
//                                        alternating between two collections
#include "StoreToolCollections.h"
#include "core/QuotesRepository.h"

#include <cstdio>
#include <cstdlib>
#include <string>

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s load|load-add-save|save-loop PATH [N]\n", argv[0]);
        return 2;
    }
    const std::string mode = argv[1];
    StandaloneRepository repository;
    repository.mFilePath = argv[2];
    repository.loadQuotes();
    if (mode == "load-add-save") {
        repository.addNewQuote()->mContent = "added by another process";
        repository.saveQuotes();
    } else if (mode == "save-loop" && argc > 3) {
        const int count = std::atoi(argv[3]);
        std::printf("saving\n");
        std::fflush(stdout);
        for (int round = 0;; ++round) {
            repository.mQuotes = generatedCollection(count, round % 2 == 0 ? 'n' : 'o');
            repository.saveQuotes();
        }
    }
    std::printf("records %zu\n", repository.mQuotes.size());
    return 0;
}
