# README must hold SOURCE and its EXPECTED output to the letter.
file(READ "${README}" readme)
foreach(part IN ITEMS "${SOURCE}" "${EXPECTED}")
  file(READ "${part}" text)
  string(FIND "${readme}" "${text}" place)
  if(place EQUAL -1)
    message(FATAL_ERROR "${README} does not show ${part} as it stands")
  endif()
endforeach()
