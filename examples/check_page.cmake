# PAGE must hold each of PARTS to the letter.
file(READ "${PAGE}" page)
foreach(part IN LISTS PARTS)
  file(READ "${part}" text)
  string(FIND "${page}" "${text}" place)
  if(place EQUAL -1)
    message(FATAL_ERROR "${PAGE} does not show ${part} as it stands")
  endif()
endforeach()
