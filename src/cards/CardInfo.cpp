#include "cards/CardInfo.h"

#include <array>

namespace vk {

namespace {

const std::array<CardInfoText, 12> kInfo{{
    {21, "Info: Camouflage",
     "Bij gebruik van deze kaart dient u een voertuig aan te wijzen. Afhankelijk van het aantal beschikbare vrije plaatsen in het voertuig, en het aantal beschikbare kompagnieën in uw kamp worden er tot maximum twee kompagnieën aan het voertuig toegevoegd."},
    {22, "Info: Uitwisseling van gevangenen",
     "Aangezien deze kaart een uitwisseling betreft, doe je er best aan om het aantal gevangen kompagnieën van je tegenstander te bekijken, want er worden niet meer kompagnieën uitgewisseld dan mogelijk is, met een maximum van 2."},
    {23, "Info: Landingsvaartuigen",
     "Als u deze kaart gebruikt, duidt u eerst het betreffende voertuig aan, en vervolgens de bestemming."},
    {24, "Info: Contra spionage",
     "Deze kaart kan enkel worden gebruikt om het gebruik van een Personnel kaart door je tegenstander te verijdelen. U wordt gevraagd of u deze kaart wilt gebruiken zodra je tegenstander aangeeft een personnel kaart te gebruiken, en welke zijn bedoelingen daarmee zijn."},
    {25, "Info: Hinderlaag",
     "Hiermee kunt u een voertuig dat voorbij je voorposten is gekomen vernietigen. Dat voertuig wordt dus uit het spel genomen, alsook de aanwezige kompagnieën."},
    {26, "Info: Helikopter",
     "Deze kaart geeft je veel vrijheid om een voertuig van of naar het hoofdkwartier te verplaatsen. Je kan zelfs de Jeep met krijgsgevangenen van het gevangenen eiland naar het hoofdkwartier overplaatsen."},
    {27, "Info: Luchtlandingstroepen",
     "Net als de kaart 'Helikopter' biedt deze kaart ruime mogelijkheden. De enige vereiste is dat het voertuig zich op één van de 4 luchthavens moet bevinden."},
    {28, "Info: Militaire Politie",
     "Deze kaart is geen aanval op de Jeep maar een aanhouding. De kaart 'Vrijgeleide' kan deze kaart niet verijdelen."},
    {29, "Info: Vrijgeleide",
     "Enkel als je Jeep wordt aangevallen kan je deze kaart gebruiken. Dit geldt ook als de tegenstander de kaart 'Hinderlaag' gebruikt tegen je Jeep."},
    {30, "Info: Mijnopruimingsdienst",
     "Gewoon de betreffende mijn aanduiden, en klaar is Kees. Let wel, enkel tegen vijandelijke mijnen te gebruiken."},
    {31, "Info: Marine luchtvaartdienst",
     "Deze kaart is iets beperkter dan sommige andere kaarten qua verplaatsingsmogelijkheden, maar kan best heel nuttig zijn. Gewoon voertuig en daarna bestemming aanduiden."},
    {32, "Info: Verbindingsdienst",
     "Iets beperkter dan de kaart 'Helikopter' maar biedt sowieso de mogelijkheid tot een verrassingsaanval met een uitweg indien de aanval niet slaagt."},
}};

} // namespace

std::optional<CardInfoText> PersonnelCardInfo(int card)
{
    if (card < 21 || card > 32)
        return std::nullopt;
    return kInfo[static_cast<std::size_t>(card - 21)];
}

} // namespace vk
