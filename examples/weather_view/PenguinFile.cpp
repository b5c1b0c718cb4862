// The file, line by line:
//
//   [                                an array, one object for each penguin
//     {
//       "Species": "Adelie",         text
//       "Island": "Torgersen",       text
//       "Beak Length (mm)": 39.1,    number or null, as are the next three
//       "Beak Depth (mm)": 18.7,
//       "Flipper Length (mm)": 181,
//       "Body Mass (g)": 3750,
//       "Sex": "MALE"                text or null
//     }, ...
//   ]
#include "PenguinFile.h"

#include <stdexcept>

#include <qvpreslayer/qvpreslayer.h>

namespace weather {

namespace {

using Bags = BagStructureSerializer::Bags;

constexpr const wchar_t* kFileNamespace = L"penguin-file";

namespace FileID {
enum : int {
    kFirst = 0x13000001,
    kPenguins = kFirst,  // list of structures; all others are members of one
    kSpecies,            // text
    kIsland,             // text
    kBeakLength,         // double
    kBeakDepth,          // double
    kFlipperLength,      // int
    kBodyMass,           // int
    kSex,                // text
    kLast = 0x1300ffff,
};
}  // namespace FileID

// Texts of others have names of others: each stands for itself, as its verbose and as its short name. Members that
// nobody asks for are registered too, since an unknown name is a failure.
void AddNames(AbstractParamAdder& adder) {
    adder.AddStructureList(FileID::kPenguins, L"penguins", new BagStructureSerializer);
    adder.AddSimple(FileID::kSpecies, L"Species", new TStringSerializer);
    adder.AddSimple(FileID::kIsland, L"Island", new TStringSerializer);
    adder.AddSimple(FileID::kBeakLength, L"Beak Length (mm)", new ParameterTypeSerializer<double>);
    adder.AddSimple(FileID::kBeakDepth, L"Beak Depth (mm)", new ParameterTypeSerializer<double>);
    adder.AddSimple(FileID::kFlipperLength, L"Flipper Length (mm)", new ParameterTypeSerializer<int>);
    adder.AddSimple(FileID::kBodyMass, L"Body Mass (g)", new ParameterTypeSerializer<int>);
    adder.AddSimple(FileID::kSex, L"Sex", new TStringSerializer);
}

// A member that is null in the text is absent from the bag.
template <class T>
std::optional<T> Member(const IParameters& bag, int id) {
    return bag.HasParameter(id) ? std::optional<T>(GetParameterValue<T>(bag, id)) : std::nullopt;
}

Penguin MakePenguin(const IParameters& bag) {
    Penguin penguin;
    penguin.species = GetParameterValue<TString>(bag, FileID::kSpecies);
    penguin.beakLength = Member<double>(bag, FileID::kBeakLength);
    penguin.beakDepth = Member<double>(bag, FileID::kBeakDepth);
    penguin.flipperLength = Member<int>(bag, FileID::kFlipperLength);
    penguin.bodyMass = Member<int>(bag, FileID::kBodyMass);
    penguin.sex = Member<TString>(bag, FileID::kSex);
    return penguin;
}

}  // namespace

void RegisterPenguinVocabulary(ParametersRegistry& registry) {
    registry.RegisterNamespace(kFileNamespace, AddNames, FileID::kFirst, FileID::kLast, false);
}

std::vector<Penguin> ReadPenguins(const TString& json) {
    // A text describes a bag, so that its root is an object: the array becomes a member. Short names are read as they
    // stand, verbose ones would be turned from camel case to dashes.
    const TString object = TString(L"{\"penguins\": ") + json + TString(L"}");
    const RefCntPtr<IParameters> file = JSONSerializer(kFileNamespace).ToParameters(object, true, false);

    std::vector<Penguin> penguins;
    for (const auto& bag : GetParameterValue<Bags>(*file, FileID::kPenguins)) {
        penguins.push_back(MakePenguin(*bag));
    }
    if (penguins.empty()) {
        throw std::runtime_error("there are no penguins");
    }
    return penguins;
}

}  // namespace weather
