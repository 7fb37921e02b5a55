#include "siblings/TvlUtils/Json.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <nlohmann/json.hpp>

namespace TvlUtils::Json {

Object::Object() : m_members(std::make_unique<std::map<TvlString, Value>>()) { }
Object::Object(const Object& other) : m_members(std::make_unique<std::map<TvlString, Value>>(other.Members())) { }
Object::Object(Object&& other) noexcept = default;
Object& Object::operator=(const Object& other)
{
    m_members = std::make_unique<std::map<TvlString, Value>>(other.Members());
    return *this;
}
Object& Object::operator=(Object&& other) noexcept = default;
Object::~Object() = default;

const std::map<TvlString, Value>& Object::Members() const
{
    static const std::map<TvlString, Value> none;
    return m_members ? *m_members : none;   // null in an object that was moved away
}

void Object::Set(TvlString name, Value value)
{
    if (!m_members)
        m_members = std::make_unique<std::map<TvlString, Value>>();
    m_members->insert_or_assign(std::move(name), std::move(value));
}

const Value* Object::Find(const TvlString& name) const
{
    const auto found = Members().find(name);
    return found == Members().end() ? nullptr : &found->second;
}

namespace {
template <class T>
bool Get(const Object& object, const TvlString& name, T& value)
{
    const Value* const member = object.Find(name);
    const T* const typed = member ? std::get_if<T>(member) : nullptr;
    if (typed)
        value = *typed;
    return typed != nullptr;
}
}   // namespace

bool Object::GetValue(const TvlString& name, TvlString& value) const { return Get(*this, name, value); }
bool Object::GetValue(const TvlString& name, bool& value) const { return Get(*this, name, value); }
bool Object::GetValue(const TvlString& name, double& value) const { return Get(*this, name, value); }
bool Object::GetValue(const TvlString& name, Object& value) const { return Get(*this, name, value); }
bool Object::GetValue(const TvlString& name, Array& value) const { return Get(*this, name, value); }

namespace {
/// Builds values as the parser meets them. False from any of its calls ends the parsing.
class Builder final : public nlohmann::json_sax<nlohmann::json> {
public:
    explicit Builder(int depth) : m_depth(static_cast<std::size_t>(depth)) { }

    std::optional<Object> Take()
    {
        if (auto* const object = std::get_if<Object>(&m_root))
            return std::move(*object);
        return std::nullopt;
    }

    bool null() override { return Add({}); }
    bool boolean(bool value) override { return Add(value); }
    bool number_integer(number_integer_t value) override { return Add(static_cast<double>(value)); }
    bool number_unsigned(number_unsigned_t value) override { return Add(static_cast<double>(value)); }
    bool number_float(number_float_t value, const string_t&) override { return Add(value); }
    bool string(string_t& value) override { return Add(TvlString(TvlPlatform::FromUtf8(value))); }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return Open(Object()); }
    bool start_array(std::size_t) override { return Open(Array()); }
    bool end_object() override { return Close(); }
    bool end_array() override { return Close(); }
    bool key(string_t& name) override
    {
        m_open.back().name = TvlPlatform::FromUtf8(name);
        return true;
    }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }

private:
    /// An object or array whose end is not read yet, and the name of the member that is being read.
    struct Container {
        Value value;
        TvlString name;
    };

    bool Add(Value value)
    {
        if (m_open.empty()) {
            m_root = std::move(value);
            return true;
        }
        Container& container = m_open.back();
        if (auto* const object = std::get_if<Object>(&container.value))
            object->Set(std::move(container.name), std::move(value));
        else
            std::get<Array>(container.value).push_back(std::move(value));
        return true;
    }
    bool Open(Value value)
    {
        if (m_open.size() >= m_depth)
            return false;
        m_open.push_back({std::move(value), {}});
        return true;
    }
    bool Close()
    {
        Value value = std::move(m_open.back().value);
        m_open.pop_back();
        return Add(std::move(value));
    }

    std::size_t m_depth;
    std::vector<Container> m_open;
    Value m_root;
};
}   // namespace

std::optional<Object> Parse(std::string_view text, const Limits& limits)
{
    if (text.size() > limits.bytes)
        return std::nullopt;
    Builder builder(limits.depth);
    if (!nlohmann::json::sax_parse(text.begin(), text.end(), &builder))
        return std::nullopt;
    return builder.Take();
}

}   // namespace TvlUtils::Json
