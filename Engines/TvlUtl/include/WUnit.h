// Measures as objects: definitions with factors and names, displays over them, conversion, and text in both directions.
#pragma once

#include "AngleMode.h"
#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <cstdint>
#include <vector>

class UnitWords;
struct WParseDiagnosis;

/// Interfaces between the framework of the user interface and the libraries below it.
namespace Framework {

/// What text fields need of a set of units. Slot order is part of the interface.
class IUnit {
public:
    /// Names of a display's definitions; see WUnit::GetUnitString.
    virtual TvlString GetUnitString(int id, unsigned form) = 0;
    /// Evaluates a text to a value in a display's unit; see WUnit::StringToValue.
    virtual int StringToValue(int id, TvlString text, double& value, unsigned flags, DRG angleMode) = 0;

protected:
    ~IUnit() = default;
};

}   // namespace Framework

/// Forms of names and values, as every text operation takes them. Any other number gives no name.
enum UnitTextForm : unsigned {
    kUnitTextNumber = 0,       ///< no name
    kUnitTextFirstName = 1,    ///< the abbreviation, behind a blank
    kUnitTextSecondName = 2,   ///< the name in the singular, behind a blank
    kUnitTextThirdName = 3,    ///< the name in the plural, behind a blank
    kUnitTextSymbol = 4,       ///< the symbol without a blank, or the third name where there is none
};

/// One measure. Built-in measures take their values from the table when they are first used.
/// Names are given as resource keys; a key without a text, and an empty one, give no name.
class TVLUTL_API WUntiDef {
public:
    /// Id 0 and no values, until Load or Define.
    WUntiDef() = default;
    virtual ~WUntiDef() = default;
    /// Takes the values of the built-in measure with this object's id.
    virtual void Load();
    /// Takes values and resolves names. `symbol` serves classes with a symbol alone.
    virtual void Define(int decimals, double inc0, double inc1, double inc2, const TvlString& name1,
        const TvlString& name2, const TvlString& name3, const TvlString& symbol, double factor);
    /// Whether a text is exactly one of the names.
    virtual bool Matches(const TvlString& text) const;
    /// The name of a form, empty where it has none; see UnitTextForm.
    virtual TvlString GetNameText(unsigned form) const;
    /// Small, medium or large increment for `level` 0, 1 or 2; -1.0 for any other.
    virtual double GetIncrement(unsigned level) const;
    /// Metres (radians for angles) of a measure. A scale of 0.0 counts as 1.0; it only decides about the rounding.
    virtual double ToMetres(double value, double scale) const;
    /// The inverse of ToMetres.
    virtual double FromMetres(double value, double scale) const;
    /// The value rounded to the decimal places, halves upward, without zeros at its end, and the name of the form.
    virtual TvlString FormatValue(double value, unsigned form) const;

    /// @{
    /// The id, 0 to 40 of a built-in measure and from 42 of a custom one. Setting it loads nothing.
    int GetId() const { return m_id; }
    void SetId(int id) { m_id = id; }
    /// @}
    /// @{
    /// Decimal places that FormatValue rounds to, 0 until loaded.
    int GetDecimals() const { return m_decimals; }
    void SetDecimals(int decimals) { m_decimals = decimals; }
    /// @}
    /// Whether Define has run.
    bool IsLoaded() const { return m_loaded != 0; }
    /// Metres per unit, radians for angles; 0.0 until loaded.
    double GetFactor() const { return m_factor; }
    /// The name of a form of this very class, without a copy; classes with other names give none.
    const TvlString& PlainName(unsigned form) const;

    // The conversions of this very class with a given factor. Dividing and multiplying by the scale changes the
    // rounding alone; documents hold values that were rounded so.

    /// Metres of a measure with `factor` metres to the unit.
    static double ToMetres(double value, double scale, double factor)
    {
        const double s = ScaleOrOne(scale);
        return (value / s) * factor * s;
    }
    /// Measure of so many metres, the inverse.
    static double FromMetres(double value, double scale, double factor)
    {
        const double s = ScaleOrOne(scale);
        return (value / s) / factor * s;
    }

protected:
    /// A scale of 0.0 counts as none.
    static double ScaleOrOne(double scale) { return scale == 0.0 ? 1.0 : scale; }

    std::int32_t m_id = 0;         // built in 0 to 40, custom from 42
    std::int32_t m_decimals = 0;   // decimal places of texts
    double m_increments[3] = {};   // small, medium, large
    TvlString m_names[3];          // first to third name
    double m_factor = 0.0;         // metres per unit, pixels aside; 0.0 until loaded
    std::int32_t m_loaded = 0;     // 1 once Define has run
};

/// A measure with a symbol that stands directly behind the number.
class TVLUTL_API WUnitWithSymbol : public WUntiDef {
public:
    void Load() override;
    void Define(int decimals, double inc0, double inc1, double inc2, const TvlString& name1, const TvlString& name2,
        const TvlString& name3, const TvlString& symbol, double factor) override;
    bool Matches(const TvlString& text) const override;
    /// The symbol without a blank for kUnitTextSymbol, else as WUntiDef.
    TvlString GetNameText(unsigned form) const override;
    TvlString FormatValue(double value, unsigned form) const override;

    /// The text that stands directly behind a number; empty for none.
    const TvlString& GetSymbol() const { return m_symbol; }

private:
    TvlString m_symbol;
};

/// Pixels of the screen: WUnit::m_dScreenResolution of them to a kilometre.
class TVLUTL_API WUnitPixel : public WUntiDef {
public:
    double ToMetres(double value, double scale) const override;
    /// The inverse of ToMetres.
    double FromMetres(double value, double scale) const override;
};

/// What a user picks in a list: one definition, or a chain over which a number is broken. Definitions belong to the
/// WUnit. Operations load the definitions that they use.
class TVLUTL_API WUnitCollection {
public:
    /// Without definitions, until Initialise.
    WUnitCollection() = default;
    virtual ~WUnitCollection() = default;
    /// Whether a text is exactly a name of any of the definitions.
    virtual bool Matches(const TvlString& text) const;
    /// The definitions' names, with the separator between them.
    virtual TvlString GetUnitString(unsigned form) const;
    /// What lists show for the display; the names, unless a derived class adds to them.
    virtual TvlString GetDisplayString(unsigned form) const;
    /// The forced decimals, or those of the last definition.
    virtual int GetDecimalPlaces() const;
    /// Forces decimals of the last part, -1 for none, and returns the argument.
    virtual int SetDecimalPlaces(int places);
    /// Increment of the first definition; -1.0 for a level above 2.
    virtual double GetIncrement(unsigned level) const;
    /// Conversion of the first definition: a chain's value counts in it.
    virtual double ToMetres(double value, double scale) const;
    /// The inverse of ToMetres.
    virtual double FromMetres(double value, double scale) const;
    /// A value as text, its sign at the head, broken over the chain.
    /// @param decimals  of the last part; -1 for the display's own
    /// @param precision scale of the remainders between the parts
    virtual TvlString FormatValue(double value, unsigned form, int decimals, double precision) const;
    /// The last part of a value in the last definition's unit, with its name. `decimals` of -1 stand for the display's
    /// own.
    virtual TvlString FormatLastPart(double value, unsigned form, int decimals) const;

    /// Takes the definitions and resolves the separator.
    /// @param separatorKind 1 for the separator of picas and points, 0 for that of all others
    /// @param forcedDecimals -1 for none
    void Initialise(const std::vector<WUntiDef*>& definitions, int separatorKind, int forcedDecimals);
    /// @{
    /// The id, 0 to 40 of a built-in display and from 42 of a custom one.
    int GetId() const { return m_id; }
    void SetId(int id) { m_id = id; }
    /// @}
    /// Definitions in the chain.
    int GetCount() const { return m_count; }

protected:
    /// The definition at a place, loaded.
    WUntiDef& Definition(std::size_t index) const;
    /// The definitions' names of a form with the separator between them.
    TvlString JoinedNames(unsigned form) const;

    std::int32_t m_id = 0;                  // built in 0 to 40, custom from 42
    std::int32_t m_count = 0;               // definitions in the chain
    std::int32_t m_forcedDecimals = -1;     // decimals of the last part; -1 for the definition's own
    TvlString m_separator;                  // stands between the parts, resolved
    std::int32_t m_initialised = 0;         // 1 once Initialise has run
    std::vector<WUntiDef*> m_definitions;   // owned by the WUnit; the first is the greatest
};

/// Displays whose last part is a whole number and a fraction.
class TVLUTL_API WUnitRational : public WUnitCollection {
public:
    /// Each display of fractions says over which denominators.
    TvlString FormatLastPart(double value, unsigned form, int decimals) const override = 0;
};

/// Fractions over 2, 4, 8 up to 128.
class TVLUTL_API WUnitRationalBase2 : public WUnitRational {
public:
    /// Without definitions, until Initialise.
    WUnitRationalBase2();
    ~WUnitRationalBase2() override = default;
    WUnitRationalBase2(const WUnitRationalBase2&) = delete;
    WUnitRationalBase2& operator=(const WUnitRationalBase2&) = delete;
    /// `decimals` has no effect.
    TvlString FormatLastPart(double value, unsigned form, int decimals) const override;

private:
    std::int32_t m_denominatorValues[7];
    const std::int32_t* m_denominators;
    std::int32_t m_denominatorCount;
};

/// Names itself as a display of fractions.
class TVLUTL_API WUnitRationalInch : public WUnitRationalBase2 {
public:
    /// The name and the word for fractions behind it.
    TvlString GetDisplayString(unsigned form) const override;
};

/// One entry of a look-up list.
struct UnitMap {
    std::int32_t id;      // what is looked for
    std::int64_t index;   // into the parallel vector of objects
};

/// A set of measures and their displays. Ids 0 to 40 are built in and added on request, ids from 42 are custom. Display
/// ids that the operations take must have been added: with the default set, 0 to 40 less 18 to 21. For the user
/// interface thread.
class TVLUTL_API WUnit : public Framework::IUnit {
public:
    /// Without definitions and displays.
    WUnit();
    /// Copies share the objects, and both would delete them: only a WUnit without definitions may be copied safely.
    WUnit(const WUnit&);
    /// Shares the objects in the same way; those that the target had are not deleted.
    WUnit& operator=(const WUnit&);
    ~WUnit();

    /// The shared set, with all built-in displays.
    static WUnit& GetDefaultWUnit();

    /// Adds displays up to the first negative id; null stands for the default list. 1 when every one was added.
    int LoadDefaults(int* ids, int reserved);

    /// Adds a built-in definition and returns its id; -1 when there is none.
    int AddUnitDefinition(int id);
    /// Adds a custom definition, owned from now on, and returns its new id. Names are resource keys. Throws
    /// std::bad_alloc: the definition is the caller's then.
    /// @param factor metres per unit
    int AddUnitDefinition(WUntiDef* def, int decimals, double inc0, double inc1, double inc2, const TvlString& name1,
        const TvlString& name2, const TvlString& name3, const TvlString& symbol, double factor);
    /// Adds a built-in display with its definitions and returns its id; -1 when there is none.
    int AddUnitDisplay(int id);
    /// Adds a custom display, owned from now on unless this throws, over definitions that were added. Returns its new
    /// id, or -1 when a definition is unknown: the id is used up all the same.
    int AddUnitDisplay(WUnitCollection* display, int* definitionIds, int count, int forcedDecimals, int separatorKind);
    /// Removes the display that was added last; 1, or 0 for an unknown id. Removing another leaves the displays behind
    /// it one place off, which callers avoid.
    int DeleteUnitDisplay(int id);

    // Conversions. A scale of -1.0 stands for the precision factor; the scale only decides about the rounding.
    // Ids 0, 17, 22 and 23 are numbers without a unit and pass unchanged.

    /// A value of the display `from` in the display `to`, through metres.
    double ConvertFromUnitToUnit(int from, int to, double value, double scale);
    /// Tenths of a micron.
    double ConvertFromUnitTo10thMicron(int unit, double value, double scale);
    /// From tenths of a micron to the display's unit, the inverse.
    double ConvertFrom10thMicronToUnit(int unit, double value, double scale);
    /// Dots per `to` of dots per `from`; 0.0 for a resolution below 1.
    double ConvertResolutionFromUnitToUnit(int from, int to, double value, double scale);

    /// WUnitCollection::GetDecimalPlaces of a display.
    int GetUnitDecimalPlaces(int id);
    /// WUnitCollection::SetDecimalPlaces of a display; returns the argument.
    int SetUnitDecimalPlaces(int id, int places);
    /// Increment 0, 1 or 2 of the display's first definition; -1.0 for any other level.
    double GetUnitIncrement(int id, unsigned level);
    /// Definitions in a display's chain.
    int GetNumberOfUnitInCollection(int id);
    /// The scale that stands in for -1.0, 1e-07 at the start; also that of remainders between the parts of a text.
    double GetPrecisionFactor();
    /// Sets the precision factor and returns it.
    double SetPrecisionFactor(double factor);
    /// Pixels per kilometre of the screen, shared by all instances.
    static double GetResolution();
    /// Sets the resolution and returns it; 1e-06 or less stands for 300 per inch.
    static double SetResolution(double resolution);
    /// The greatest display id given so far, 41 at the start.
    int GetMaxUnitRange();
    /// The stored index of an id, or -1.
    long long FindUnit(int id, std::vector<UnitMap>& map);

    /// Names of a display's definitions; see UnitTextForm.
    TvlString GetUnitString(int id, unsigned form) override;
    /// What lists show for a display; see UnitTextForm.
    TvlString GetUnitDisplayString(int id, unsigned form);
    /// A value as text; `decimals` -1 for the display's own.
    TvlString DisplayUnitValueAsString(int id, double value, unsigned form, int decimals);
    /// Evaluates a text to a value in the display's unit. 1 on success; a NaN is a success.
    /// @param flags bits of WTokenFlags (WEqParser.h), with 256 to admit unit words
    int StringToValue(int id, TvlString text, double& value, unsigned flags, DRG angleMode) override;

    /// Where StringToValue goes wrong, and how (WEqParser.h); its position counts characters of `text`. No problem for
    /// a text that has a value.
    WParseDiagnosis DiagnoseText(int id, const TvlString& text, unsigned flags, DRG angleMode);

    static double m_dScreenResolution;   // pixels per kilometre; 1e-06 or less stands for 300 per inch

private:
    WUnitCollection& Display(int id);
    /// Takes a display's factor into the table when its conversion is that of WUntiDef.
    void KeepLinearFactor(int id);
    const UnitWords& Words();
    int Evaluate(
        int id, const TvlString& text, double& value, unsigned flags, DRG angleMode, WParseDiagnosis* diagnosis);
    double Scale(double scale) const { return scale == -1.0 ? m_precision : scale; }

    std::int32_t m_nextDefinition = 42;
    std::int32_t m_nextDisplay = 42;
    double m_precision = 1e-07;
    std::vector<UnitMap> m_definitionMap;
    std::vector<WUntiDef*> m_definitions;
    std::vector<UnitMap> m_displayMap;
    std::vector<WUnitCollection*> m_displays;
    std::int16_t m_displayPlaces[64] = {};   // where ids below 64 were last found in the map; checked before use
    double m_linearFactors[41] = {};   // of built-in displays whose conversion was seen to be plain; 0.0 for the others
    UnitWords* m_words = nullptr;      // names of the definitions, made when a text asks for them
};
