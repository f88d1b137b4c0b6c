// Asks the library one question about names and prints the answer as JSON, for names.py.

#include <foundation/network/InetAddress.hpp>

#include "address/JsonText.hpp"

#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <system_error>

namespace {

using namespace foundation::network;
using tests::jsonArray;
using tests::jsonText;

std::string jsonOf(const InetAddress& address)
{
    return "{\"address\":" + jsonText(address.toString())
           + ",\"hostName\":" + jsonText(address.getHostName()) + "}";
}

const std::map<std::string, std::function<std::string(const std::string&)>> questions = {
    {"first", [](const std::string& name) { return jsonOf(InetAddress::getByName(name)); }},
    {"all",
     [](const std::string& name) {
         return jsonArray(InetAddress::getAllByName(name),
                          [](const InetAddress& address) { return jsonOf(address); });
     }},
    {"name", [](const std::string& text) { return jsonText(InetAddress(text).getHostName()); }},
    {"canonical",
     [](const std::string& text) { return jsonText(InetAddress(text).getCanonicalHostName()); }},
    {"canonical-of-name",
     [](const std::string& name) {
         return jsonText(InetAddress::getByName(name).getCanonicalHostName());
     }},
    {"local-name", [](const std::string&) { return jsonText(getLocalHostName()); }},
    {"local-host", [](const std::string&) { return jsonOf(InetAddress::getLocalHost()); }},
};

} // namespace

int main(int count, char** words)
{
    if (count != 3 || !questions.contains(words[1]))
        return 2;
    try {
        std::cout << questions.at(words[1])(words[2]) << '\n';
    } catch (const std::system_error& failure) {
        std::cout << "{\"category\":" << jsonText(std::string(failure.code().category().name()))
                  << ",\"value\":" << failure.code().value()
                  << ",\"text\":" << jsonText(std::string(failure.what())) << "}\n";
    }
    return 0;
}
