#!/usr/bin/env python3
"""Runs exports.py on invented names."""

import unittest

import exports


class ExportsTest(unittest.TestCase):
    def test_takes_what_callers_need(self):
        names = [
            "foundation::network::InetAddress::toString[abi:cxx11]() const",
            "typeinfo for boost::wrapexcept<std::out_of_range>",
            "vtable for foundation::network::IdnConverterException",
            "foundation::network::detail::ImmutableIterableRange<unsigned char>::size() const",
            "void foundation::network::X::f<foundation::network::text::Y>(foundation::network::text::Y)",
        ]
        self.assertEqual(exports.leaks(names), [])

    def test_finds_what_should_be_hidden(self):
        for name in [
            "boost::asio::detail::execution_context_service_base<int>::id",
            "guard variable for boost::asio::detail::x",
            "std::vector<boost::asio::ip::address>::push_back(boost::asio::ip::address&&)",
            "icu_72::UnicodeString::f()",
            "icu::UnicodeString::f()",
            "foundation::network::platform::readHostName(std::u16string&)",
            "foundation::network::adapter::Listing::all(int)",
            "void foundation::network::text::f<int>(int)",
            "typeinfo for foundation::network::address::X",
        ]:
            with self.subTest(name):
                self.assertEqual(exports.leaks([name]), [name])


if __name__ == "__main__":
    unittest.main()
