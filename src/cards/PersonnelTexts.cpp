#include "cards/PersonnelTexts.h"

#include <array>

namespace vk {

namespace {

struct PromptRow {
    int Card;
    PersonnelPrompts Prompts;
};

constexpr std::array<PromptRow, 10> kPrompts{{
    {21, {"camouflage", "dubbelklik op het voertuig waarin je je kompagnieën wilt plaatsen", ""}},
    {22, {"uitwisseling van gevangenen", "", ""}},
    {23, {"landingsvaartuigen",
          "dubbelklik op het voertuig dat je vanaf de haven wilt laten landen op één van de kustwegen",
          "dubbelklik op een vakje waar je voertuig moet komen op één van de kustwegen"}},
    {25, {"hinderlaag",
          "dubbelklik op het vijandelijk voertuig dat in de hinderlaag terecht kwam en moet worden vernietigd", ""}},
    {26, {"helikopter",
          "dubbelklik op het voertuig dat je van of naar het HQ wilt verplaatsen met de vliegende banaan", ""}},
    {27, {"luchtlandingstroepen", "dubbelklik op het voertuig dat je vanaf het vliegveld wilt verplaatsen",
          "dubbelklik op een leeg vakje waar de luchtlandingstroepen je voertuig moeten droppen"}},
    {28, {"militaire politie", "", ""}},
    {30, {"mijnopruimingsdienst",
          "dubbelklik op de door het vijandelijk leger geplaatste mijn om deze onschadelijk te maken en in uw kamp "
          "te leggen",
          ""}},
    {31, {"marine luchtvaartdienst",
          "dubbelklik op het voertuig dat je vanaf een haven wilt verplaatsen met de marine luchtvaartdienst",
          "dubbelklik op de andere haven of een vlieghaven waar je voertuig moet komen"}},
    {32, {"verbindingsdienst",
          "dubbelklik op het voertuig op je HQ welke je wilt verplaatsen naar een strategisch punt",
          "dubbelklik op het strategisch punt waar je voertuig naar gebracht moet worden"}},
}};

struct ReceiptRow {
    int Value;
    PersonnelReceipt Receipt;
};

constexpr std::array<ReceiptRow, 10> kReceipts{{
    {1,
     {"opponent uses card 21 for sending up to 2 compagnies to one of his vehicles at ", true, false,
      "Personnel - Camouflage",
      "De kaart 'Camouflage' laat de tegenstander toe 2 kompagnieën te sturen naar het rood gemerkt voertuig.",
      "Personnel - Camouflage",
      "De kaart 'Camouflage' laat de tegenstander toe 2 kompagnieën te sturen naar het rood gemerkt voertuig. Wil "
      "je dit verijdelen met je kaart 'Contra Spionage'?"}},
    {2,
     {"opponent uses card 22 for exchanging 2 compagnies in prison at ", false, false,
      "Personnel - Uitwisseling gevangenen",
      "Dank zij een vredesconferentie worden tot 2 gevangen kompagnieën uitgewisseld.",
      "Personnel - Uitwisseling gevangenen",
      "Tenzij u de kaart 'Contra Spionage' gebruikt, mogen er 2 gevangen kompagniëen uitgewisseld worden. Wilt u "
      "deze kaart gebruiken?"}},
    {3,
     {"opponent uses card 23 for embarking one of his vehicles somewhere on the coastline at ", true, true,
      "Personnel - Landingsvaartuigen",
      "De tegenstander gaat het rood gemerkt voertuig middels landingsvaartuigen naar het blauw gemerkt vakje "
      "brengen.",
      "Personnel - Landingsvaartuigen",
      "De tegenstander gaat het rood gemerkt voertuig middels landingsvaartuigen naar het blauw gemerkt vakje "
      "brengen. Wilt u de kaart 'Contra Spionage' gebruiken om dit te voorkomen?"}},
    {5,
     {"opponent uses card 25 to destroy one of my vehicles in an ambush at ", true, false,
      "Personnel - Hinderlaag",
      "Het rood gemerkt voertuig is in een hinderlaag van de vijand terecht te komen en wordt samen met de "
      "manschappen vernietigd.",
      "Personnel - Hinderlaag",
      "Het rood gemerkt voertuig dreigt in een hinderlaag van de vijand terecht te komen. Wilt u dit verijdelen "
      "door uw kaart 'Contra spionage' te gebruiken?"}},
    {6,
     {"opponent uses card 26 for dropping one of his vehicles to or from the HQ to or from any other field at ",
      true, true, "Personnel - Helikopter",
      "Dank zij de 'Vliegende Banaan' verplaats de tegenstander zijn rood gemerkt voeruig naar het blauw gemerkt "
      "vakje of HQ.",
      "Pesonnel - Helikopter",
      "Wilt u de kaart 'Contra Spionage' gebruiken om te verhinderen dat de vijand zijn rood gemerkt voertuig "
      "verplaatst naar het blauw gemerkt vakje of HQ?"}},
    {7,
     {"opponent uses card 27 for dropping one of his vehicles from an airport to any other field at ", true, true,
      "Personnel - Luchtlandingstroepen",
      "Het op het vliegveld staand roodgemerkt vijandelijk voertuig zal worden neergelaten op het blauw gemerkt "
      "vakje.",
      "Personnel - Luchtlandingstroepen",
      "Het op het vliegveld staand roodgemerkt vijandelijk voertuig zal worden neergelaten op het blauw gemerkt "
      "vakje. Wilt u uw kaart 'Contra Spionage' gebruiken om dit te verhinderen?"}},
    {8,
     {"opponent uses card 28 to stop my escaping compagnies and send them back to prison at ", false, false,
      "Personnel - Militaire Politie",
      "Door ingrijpen van de Militaire Politie wordt uw jeep met ontsnapte gevangenen onderschept en terug naar "
      "het gevangenenkamp gestuurd.",
      "Personnel - Militaire Politie",
      "Wilt u uw kaart 'Contra Spionage' aanwenden zodat uw jeep niet terug moet worden gestuurd naar het "
      "gevangenenkamp?"}},
    {10,
     {"opponent uses card 30 to demine on of my planted mines at ", false, true,
      "Personnel - Mijnopruimingsdienst",
      "De door u (rood gemerkte) geplaatste mijn werd door een verzetsgroep onschadelijk gemaakt.",
      "Personnel - Mijnopruimingsdienst",
      "De door u (rood gemerkte) geplaatste mijn dreigt door een verzetsgroep onschadelijk te worden gemaakt. "
      "Wilt u dit plan dwarsbomen door uw 'Contra Spionage' te gebruiken?"}},
    {11,
     {"opponent uses card 31 for transferring one of his vehicles from a harbour to another harbour or airport at ",
      true, true, "Personnel - Marine luchtvaartdienst",
      "Het rood gemerkt voertuig is ingescheept op het vliegdekschep 'Admiraal' om zo het blauw gemerkt vakje te "
      "bereiken.",
      "Personnel - Marine luchtvaartdienst",
      "Het rood gemerkt voertuig staat op het punt in te schepen op het vliegdekschep 'Admiraal' om zo het blauw "
      "gemerkt vakje te bereiken. Wilt u dit inschepen beletten door uw 'Contra Spionage' te gebruiken?"}},
    {12,
     {"opponent uses card 32 for dropping one of his vehicles at the HQ to a strategic point at ", true, true,
      "Personnel - Verbindingsdienst",
      "De verbindingsdienst van de luchtmacht gaat het rood gemerkt voertuig verplaatsen naar het blauw gemerkt "
      "vakje.",
      "Personnel - Verbindingsdienst",
      "De verbindingsdienst van de luchtmacht gaat het rood gemerkt voertuig verplaatsen naar het blauw gemerkt "
      "vakje. Wilt u uw 'Contra Spionage' gebruiken om dit te verbieden?"}},
}};

} // namespace

const PersonnelPrompts* PromptsOf(int card)
{
    for (const PromptRow& row : kPrompts)
        if (row.Card == card)
            return &row.Prompts;
    return nullptr;
}

const PersonnelReceipt* ReceiptOf(int value)
{
    for (const ReceiptRow& row : kReceipts)
        if (row.Value == value)
            return &row.Receipt;
    return nullptr;
}

} // namespace vk
