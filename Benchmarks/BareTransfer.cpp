#include "Benchmarks/BareFigures.h"

#include <array>
#include <thread>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>

Samples bareTransfer(const std::string& bytes, int repetitions)
{
    namespace asio = boost::asio;
    using asio::ip::tcp;
    asio::io_context context;
    tcp::acceptor acceptor{context, tcp::endpoint{asio::ip::address_v4::loopback(), 0}};
    tcp::socket reader{context};
    reader.connect(acceptor.local_endpoint());
    auto writer = acceptor.accept();
    std::jthread sending{[&] {
        std::array<char, 1> asked{};
        boost::system::error_code ended;
        while (asio::read(writer, asio::buffer(asked), ended) == asked.size())
            asio::write(writer, asio::buffer(bytes), ended);
    }};
    std::string received(bytes.size(), '\0');
    Samples samples;
    for (int each = 0; each < repetitions; ++each) {
        samples.time([&] {
            asio::write(reader, asio::buffer("?", 1));
            asio::read(reader, asio::buffer(received));
        });
    }
    reader.close();
    return samples;
}
