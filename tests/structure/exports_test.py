#!/usr/bin/env python3
"""Runs exports.py on invented names."""

import unittest

import exports


class ExportsTest(unittest.TestCase):
    def test_takes_what_callers_need(self):
        names = [
            "foundation::network::InetAddress::toString[abi:cxx11]() const",
            "typeinfo for boost::wrapexcept<std::out_of_range>",
            "vtable for boost::exception",
            "typeinfo name for boost::exception_detail::clone_base",
            "vtable for foundation::network::IdnConverterException",
            "foundation::network::detail::ImmutableIterableRange<unsigned char>::size() const",
            "void foundation::network::X::f<foundation::network::text::Y>(foundation::network::text::Y)",
        ]
        self.assertEqual(exports.leaks(names), [])

    def test_finds_what_should_be_hidden(self):
        for name in [
            "boost::asio::detail::execution_context_service_base<int>::id",
            "boost::system::error_category::init_stdcat() const",
            "typeinfo for boost::wrapexcept<std::bad_alloc>",
            "foundation::network::iri::grammar::detail::asciiMembers<27u>",
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

    def test_lists_what_programs_are_linked_with(self):
        string = "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >"
        view = "std::basic_string_view<char16_t, std::char_traits<char16_t> >"
        for name, line in [
            ("a::b::C::C()", "a::b::C::C()"),
            (f"a::f({string} const&, {view})", "a::f(std::string const&, std::u16string_view)"),
            (f"a::B<{string} >::~B()", "a::B<std::string>::~B()"),
            ("a::f(std::vector<int, std::allocator<int> >)", "a::f(std::vector<int>)"),
            ("a::operator==(a::B const&, a::B const&)",) * 2,
            ("a::B::operator bool() const",) * 2,
            ("typeinfo name for a::B",) * 2,
            ("non-virtual thunk to a::B::~B()",) * 2,
            ("guard variable for a::B<int>::f() const::x",) * 2,
            ("TLS init function for a::x",) * 2,
        ]:
            with self.subTest(name):
                self.assertEqual(exports.listed([name, name]), [line])

    def test_lists_nothing_that_a_compiler_may_leave_out(self):
        for name in [
            "boost::exception::~exception()",
            "std::vector<a::B, std::allocator<a::B> >::push_back(a::B&&)",
            "typeinfo for std::allocator<void>",
            "void std::__detail::f<int>(int)",
            "void a::b::f<int>(int)",
            "auto a::B<int>::f<char>(char) const",
            "std::vector<int, std::allocator<int> > a::f<int>(int)",
            "a::B& a::f<int>(int)",
            "__gnu_cxx::x",
        ]:
            with self.subTest(name):
                self.assertEqual(exports.listed([name]), [])

    def test_tells_what_came_and_went(self):
        self.assertEqual(exports.differences(["a", "b"], ["a", "c"]), ["- b", "+ c"])
        self.assertEqual(exports.differences(["a"], ["a"]), [])


if __name__ == "__main__":
    unittest.main()
