#include <iostream>
#include <string>

#include <CLI/CLI.hpp>

#include "Benchmarks/ServedBooks.h"

/// Makes a database of generated books that the service can serve.
int main(int argc, char** argv)
{
    std::size_t entries = 100'000;
    std::string file;
    CLI::App app{"Makes a service's database of generated books."};
    app.add_option("--entries", entries, "How many entries")->capture_default_str();
    app.add_option("--database", file, "The file; it is replaced")->required();
    CLI11_PARSE(app, argc, argv);
    try {
        ServedBooks::write(file, entries);
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
    std::cout << "Sign in as " << ServedBooks::email << " with: " << ServedBooks::password << '\n';
    return 0;
}
