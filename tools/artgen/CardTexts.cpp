#include "CardTexts.h"

#include <array>

namespace vk::art {

CardWords RadioYamboWords(int card) {
  static const std::array<CardWords, 20> words{{
      {"dringend brandstofdienst", "Je brandstof is op: een paar beurten kan je niet rijden. Schieten mag wel."},
      {"vertrouwelijk luchtaanval", "Je tegenstander verliest 2 kompagnieën aan zijn reserve."},
      {"mededeling raad voor de dienstplicht", "Tot 3 kompagnieën uit je reserve komen naar je kamp."},
      {"speciaal algemene mobilisatie", "Tot 3 kompagnieën naar je kamp, en 1 verloren voertuig terug."},
      {"exclusief muiterij", "Tot 2 van je gevangenen ontsnappen naar je kamp."},
      {"operatie luipaard", "Kies een voertuig van je tegenstander: het gaat uit het spel."},
      {"stop brandinstrukties uitvoeren", "Voertuigen trekken zich terug in de richting van hun kamp."},
      {"laatste nieuws militaire aanslag", "Je verliest 3 kompagnieën aan je reserve."},
      {"telex voedselvergiftiging", "Elk voertuig op de weg houdt 1 kompagnie; de rest gaat naar je kamp."},
      {"voorrang militaire ambulance", "Tot 2 kompagnieën uit je reserve komen naar je kamp."},
      {"nieuwsbericht tse tse vlieg", "Een van je voertuigen slaapt een paar beurten en doet niets."},
      {"officieel ministerie van oorlog", "1 kompagnie naar je kamp, en tot 2 verloren voertuigen terug."},
      {"bericht verloven ingetrokken", "Tot 2 kompagnieën uit je reserve komen naar je kamp."},
      {"oproep van het rode kruis gele koorts", "Elk van je voertuigen met kompagnieën verliest er 1 aan je reserve."},
      {"nieuwsbericht nieuwjaarsfeest", "Al je voertuigen keren terug naar je kamp."},
      {"melding weerbericht", "Storm! Elk voertuig op een kustweg gaat verloren, van beide legers."},
      {"rechtstreekse uitzending carnavalsfeest", "Je verliest 3 kompagnieën aan je reserve."},
      {"laatste nieuws hulp van de geallieerden", "1 kompagnie naar je kamp, en tot 2 verloren voertuigen terug."},
      {"zeer geheim spionage", "Je mag de Personnel kaarten van je tegenstander bekijken."},
      {"alarm mijnopruimingsdienst", "Je voertuigen die een mijn vervoeren gaan verloren; de mijnen keren terug."},
  }};
  return words.at(static_cast<std::size_t>(card - 1));
}

CardWords PersonnelWords(int card) {
  static const std::array<CardWords, 12> words{{
      {"Camouflage", "Tot 2 kompagnieën uit je kamp stappen in een voertuig."},
      {"Uitwisseling van gevangenen", "Beide legers krijgen tot 2 gevangenen terug in hun kamp."},
      {"Landingsvaartuigen", "Een voertuig in een haven landt op een vrije kustweg."},
      {"Contra spionage", "Verijdel een Personnel kaart van je tegenstander."},
      {"Hinderlaag", "Vernietig een vijandelijk voertuig achter je voorposten."},
      {"Helikopter", "Een voertuig vliegt naar of van je HQ."},
      {"Luchtlandingstroepen", "Een voertuig op een luchthaven springt af op een vrij vakje."},
      {"Militaire Politie", "De vijandelijke jeep moet terug naar zijn eiland."},
      {"Vrijgeleide", "Beschermt je jeep tegen een aanval."},
      {"Mijnopruimingsdienst", "Een vijandelijke mijn verdwijnt naar je kamp."},
      {"Marine luchtvaartdienst", "Van een haven naar de andere haven of een luchthaven."},
      {"Verbindingsdienst", "Een voertuig uit je kamp naar een vrij strategisch punt."},
  }};
  return words.at(static_cast<std::size_t>(card - 21));
}

}  // namespace vk::art
