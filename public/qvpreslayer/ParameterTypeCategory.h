// The kinds of registered parameters.
#pragma once

// What a parameter is: it decides how its value is walked, written and read. The numbers are fixed.
enum ParameterTypeCategory {
    PTC_None = 0,           // not registered; as an argument: to be looked up
    PTC_Text = 1,           // one value written as text: strings, names, identifiers, durations, enumerations
    PTC_Number = 2,         // one number
    PTC_Bool = 3,           // one truth value
    PTC_List = 4,           // a vector of single values
    PTC_Bag = 5,            // a nested bag of parameters
    PTC_Structure = 6,      // one structured value
    PTC_StructureList = 7,  // a vector of structured values
    PTC_Map = 8,            // single values by key
    PTC_StructureMap = 9,   // structured values by key
};
